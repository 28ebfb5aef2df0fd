#include "engine/views/HitList.h"

#include "engine/profiles/ProfileWorldTest.h"
#include "platform/ByteBuffer.h"

namespace {

class HitListTest : public ProfileWorldTest {
 protected:
    void SetUp() override { profile = &AddProfile(L"P"); }

    Node& Clip(const std::wstring& name, const std::string& text) {
        Node& clip = AddClip(*profile, name);
        clip.SetTag(MakeClipTag(ClipNumberOf(&clip), 1, L"15.11.1999 13:10:00", L""));
        ByteWriter writer;
        writer.Int32(1);
        writer.Int16(0);
        writer.Int32(static_cast<std::int32_t>(text.size()));
        writer.Bytes(text.data(), text.size());
        fake.files.SetBytes(ClipFileOf(&clip),
                            {reinterpret_cast<const char*>(writer.Image().data()), writer.Image().size()});
        return clip;
    }

    // Reads what the plan says, from one clip on, up to another.
    void Read(std::size_t from = 0, std::size_t most = 100) {
        struct Sink : SearchSink {
            bool GoesOn(std::size_t clip) override { return (read = clip) < most; }
            void Found(std::size_t clip, ContentHit hit) override { hits.emplace_back(clip, std::move(hit)); }
            void Unreadable(std::size_t) override {}
            std::size_t most = 0;
            std::size_t read = 0;
            std::vector<std::pair<std::size_t, ContentHit>> hits;
        } sink;
        sink.most = most;
        const auto plan = list.Plan();
        ContentSearch(fake.files, *plan).Run(sink, from);
        reads += std::min(most, plan->clips.size()) - from;
        for (auto& [clip, hit] : sink.hits)
            list.Add(clip, std::move(hit));
        list.SetRead(std::min(most, plan->clips.size()));
    }
    std::wstring Rows() const {
        std::wstring rows;
        for (int row = 0; row < static_cast<int>(list.Content().entries.size()); ++row)
            rows += list.Text(row, 0) + L"=" + list.Text(row, HitList::kPlaceColumn) + L" ";
        return rows;
    }

    HitList list{nodes, fake.clock};
    Node* profile = nullptr;
    std::size_t reads = 0;
};

}  // namespace

TEST_F(HitListTest, LookAgain_KeepsWhatWasReadAndFollowsTheTree) {
    Clip(L"eins", "der Hut");
    Node& second = Clip(L"zwei", "die Hand");
    Clip(L"Hut", "nichts");
    Clip(L"vier", "ein hut");
    list.Search(nullptr, L"hut");
    EXPECT_EQ(Rows(), L"Hut=Hut ") << "names at once";
    Read(0, 2);
    EXPECT_EQ(Rows(), L"Hut=Hut eins=der Hut ");
    EXPECT_EQ(list.Status(), L"2 Treffer, 2 von 3 Clips gelesen ...");

    nodes.Remove(second);
    Clip(L"neu", "Hutschachtel");
    Read(2);
    EXPECT_TRUE(list.IsOutdated());
    EXPECT_EQ(list.Content().entries.size(), 2u) << "no new row names another node";
    list.LookAgain();
    EXPECT_EQ(Rows(), L"Hut=Hut eins=der Hut vier=ein hut ");
    reads = 0;
    Read();
    EXPECT_EQ(Rows(), L"Hut=Hut eins=der Hut vier=ein hut neu=Hutschachtel ");
    EXPECT_EQ(reads, 1u);
    EXPECT_EQ(list.Text(0, HitList::kSizeColumn), L"16 Bytes");
    EXPECT_EQ(list.Status(), L"4 Treffer");
    EXPECT_FALSE(list.GoesOn());
    // In the order of the tree from then on, and nothing is read twice.
    list.LookAgain();
    EXPECT_TRUE(list.Plan()->clips.empty());
    EXPECT_EQ(Rows(), L"Hut=Hut eins=der Hut vier=ein hut neu=Hutschachtel ");
    nodes.Clear();
    list.LookAgain();
    EXPECT_EQ(Rows(), L"");
}

TEST_F(HitListTest, WhatDidNotFit_IsReadAgainOnlyWhenItMay) {
    Node& first = Clip(L"eins", "der Hut");
    Clip(L"zwei", "die Hand");
    Node& third = Clip(L"drei", "Hutmacher");
    list.Search(nullptr, L"hu");
    Read();
    for (const wchar_t* text : {L"hut", L"hutm", L"hutm c"}) {
        list.Search(nullptr, text);
        Read();
    }
    EXPECT_EQ(Rows(), L"drei=Hutmacher ");
    EXPECT_EQ(reads, 3u + 0u + 1u + 0u);
    list.Search(nullptr, L"hut rot");
    Read();
    EXPECT_EQ(Rows(), L"");
    first.SetText(L"rot");
    list.LookAgain();
    Read();
    EXPECT_EQ(Rows(), L"rot=der Hut ") << "its name asks less of its file";
    first.SetText(L"blau");
    list.LookAgain();
    Read();
    EXPECT_EQ(Rows(), L"");
    third.SetText(L"rot");
    list.Search(nullptr, L"macher rot");
    Read();
    EXPECT_EQ(Rows(), L"rot=Hutmacher ");
    third.SetText(L"drei");
    list.LookAgain();
    Read();
    list.LookAgain();
    EXPECT_TRUE(list.Plan()->clips.empty()) << "it has been looked into";
    for (const wchar_t* text : {L"ha", L"and", L"name:and", L"hand typ:bild"})
        list.Search(nullptr, text);
    list.Search(nullptr, L"hand");
    Read();
    EXPECT_EQ(Rows(), L"zwei=die Hand ");
    list.SetUnreadable(1);
    list.Search(nullptr, L"handtuch");
    EXPECT_EQ(list.Plan()->clips.size(), 3u) << "it may be readable now";
    reads = 0;
    for (const wchar_t* text : {L"nirgend", L"nirgends"}) {
        list.Search(nullptr, text);
        Read();
        EXPECT_TRUE(list.GoesOn());
        Read();
    }
    EXPECT_EQ(reads, 2 * 3u) << "of the first word, with its marks and without";
}

TEST_F(HitListTest, Search_TypedOn_RowsStayWhoseLinesShowIt) {
    Clip(L"eins", "der Hut");
    Clip(L"zwei", "Hut\nrot");
    Clip(L"drei", "Hut\nblau");
    Clip(L"vier", "Hund, Hut rot");
    Clip(L"f\u00fcnf", std::string(60, '-') + "Hut");
    list.Search(nullptr, L"hu");
    Read();
    reads = 0;
    list.Search(nullptr, L"hut");
    ASSERT_EQ(list.Content().entries.size(), 4u);
    EXPECT_EQ(list.LineOf(0)->size, 3u);
    Read();
    EXPECT_EQ(reads, 1u) << "the mark of one of them is elsewhere";
    EXPECT_EQ(list.ContentOf(4)->begin, 6u);
    list.Search(nullptr, L"hut ro");
    EXPECT_EQ(Rows(), L"vier=Hund, Hut rot ");
    Read();
    EXPECT_EQ(Rows(), L"vier=Hund, Hut rot zwei=Hut ");
    list.Search(nullptr, L"hu");
    Read();
    list.Search(nullptr, L"hu \u2026");
    EXPECT_EQ(Rows(), L"") << "what says that a line is cut is none of the text";
}

TEST_F(HitListTest, GoesOn_TriesOtherMarksWhenNothingFits) {
    Clip(L"eins",
         "die Stra\xDF"
         "e");
    fake.files.AddDirectory(L"C:\\Q");
    list.Search(profile, L"strasse");
    Read();
    EXPECT_EQ(Rows(), L"");
    EXPECT_TRUE(list.GoesOn());
    Read();
    EXPECT_EQ(Rows(), L"eins=die Straße ");
    EXPECT_FALSE(list.GoesOn());
    list.LeaveOut(0);
    EXPECT_EQ(Rows(), L"eins=die Straße ") << "it has been read";
    EXPECT_NE(list.Status().find(L"antwortet nicht"), std::wstring::npos);
}

TEST_F(HitListTest, SetOrder_SortsByAColumnAndPutsLaterHitsBehindUntilTheyAreSortedIn) {
    Clip(L"zwei", "Hut").SetTag(L"C&1,1&02.01.2001 00:00:00&");
    Clip(L"Drei", "ein Hut von dreien").SetTag(L"C&2,1&01.02.2001 00:00:00&");
    Clip(L"eins", "kein Hut").SetTag(L"C&3,1&30.12.2000 23:59:59&");
    list.Search(nullptr, L"hut");
    const auto names = [&] {
        std::wstring all;
        for (int row = 0; row < static_cast<int>(list.Content().entries.size()); ++row)
            all += list.Text(row, 0) + L" ";
        return all;
    };
    list.SetOrder({0, false});
    Read();
    EXPECT_EQ(names(), L"zwei Drei eins ");
    list.PutInOrder();
    EXPECT_EQ(names(), L"Drei eins zwei ");
    EXPECT_EQ(list.LineOf(2)->text, L"Hut") << "a row's place goes with it";
    EXPECT_EQ(list.Content().entries[2].treeIndex, Get(L"zwei").Index());
    list.SetOrder({HitList::kCapturedColumn, true});
    EXPECT_EQ(names(), L"Drei zwei eins ");
    list.SetOrder({HitList::kSizeColumn, false});
    list.LookAgain();
    EXPECT_EQ(names(), L"zwei eins Drei ");
    list.SetOrder({});
    EXPECT_EQ(names(), L"zwei Drei eins ");
}
