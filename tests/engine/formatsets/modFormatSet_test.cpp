#include "engine/formatsets/modFormatSet.h"

#include "engine/formatsets/FormatSetTest.h"
#include "fake/FaultLoop.h"

namespace {

class modFormatSetTest : public FormatSetTest {};

TEST_F(modFormatSetTest, InitDefaultFormatSets_MakesTheTwoSetsWithSortedEntries) {
    InitDefaultFormatSets();
    EXPECT_TRUE(FormatSetsChanged);
    ASSERT_EQ(FormatSets().Count(), 2);
    const FormatSet picture = {L"Paintprush-Bild", L"Bitmap,DIB", {{L"Bitmap", true}, {L"DIB", false}}};
    const FormatSet text = {L"Text",
                            L"<\?\?\?>,OemText,Text,Unicode",
                            {{L"<\?\?\?>", false}, {L"OemText", true}, {L"Text", true}, {L"Unicode", true}}};
    EXPECT_EQ(FormatSets().Item(1), picture);
    EXPECT_EQ(FormatSets().Item(2), text);
}

TEST_F(modFormatSetTest, FindFormatSet_MatchesTheSameNamesInAnyOrder) {
    InitDefaultFormatSets();
    const auto found = [](std::initializer_list<const wchar_t*> names) {
        return FindFormatSet(FormatSets(), FormatsNamed(names).get());
    };
    EXPECT_EQ(found({L"DIB", L"Bitmap"}), 1);
    EXPECT_EQ(found({L"Unicode", L"Text", L"<\?\?\?>", L"OemText"}), 2);
    EXPECT_EQ(found({L"Bitmap", L"DIB", L"Palette"}), 0);
    EXPECT_EQ(found({L"Bitmap"}), 0);
    EXPECT_EQ(found({L"bitmap", L"DIB"}), 0);
    EXPECT_EQ(found({L"DIB", L"DIB", L"Bitmap"}), 0);
    EXPECT_EQ(found({}), 0);
    EXPECT_EQ(FindFormatSet(FormatSets(), nullptr), 0);
}

TEST_F(modFormatSetTest, AddFormatSet_KeepsEveryFormatAndIsFoundFromThenOn) {
    const auto formats = FormatsNamed({L"b", L"a", L"Z", L"a"});
    EXPECT_EQ(AddFormatSet(FormatSets(), formats.get(), L"Neu"), 1);
    EXPECT_TRUE(FormatSetsChanged);
    EXPECT_EQ(FormatSets().Item(1).Key, L"Z,a,a,b");  // code units: capitals come first
    EXPECT_EQ(FormatSets().Item(1).Formats,
              (std::vector<FormatSetEntry>{{L"Z", true}, {L"a", true}, {L"a", true}, {L"b", true}}));
    EXPECT_EQ(AddFormatSet(FormatSets(), formats.get(), L"Neu"), 2);
    EXPECT_EQ(FindFormatSet(FormatSets(), FormatsNamed({L"a", L"Z", L"b", L"a"}).get()), 1);
    EXPECT_EQ(AddFormatSet(FormatSets(), nullptr, L"Nichts"), -1);
    EXPECT_EQ(FormatSets().Count(), 2);
}

TEST_F(modFormatSetTest, DeleteFormatSet_MovesTheLaterOnesDown) {
    FormatSetList list = ListNamed({L"1", L"2", L"3"});
    FormatSetsChanged = false;
    for (const int bad : {-1, 0, 4})
        EXPECT_FALSE(DeleteFormatSet(list, bad));
    EXPECT_EQ(list, ListNamed({L"1", L"2", L"3"}));
    FormatSetsChanged = false;
    EXPECT_TRUE(DeleteFormatSet(list, 2));
    EXPECT_TRUE(FormatSetsChanged);
    EXPECT_EQ(list, ListNamed({L"1", L"3"}));
    EXPECT_TRUE(DeleteFormatSet(list, 2));
    EXPECT_TRUE(DeleteFormatSet(list, 1));
    EXPECT_FALSE(DeleteFormatSet(list, 1));
    EXPECT_EQ(list.Count(), 0);
}

TEST_F(modFormatSetTest, GetFormatSaveFlag_OfTheFirstEntryWithExactlyThatName) {
    InitDefaultFormatSets();
    FormatSets().Append({L"Doppelt", L"a,a", {{L"a", false}, {L"a", true}}});
    EXPECT_TRUE(GetFormatSaveFlag(1, L"Bitmap"));
    EXPECT_FALSE(GetFormatSaveFlag(1, L"DIB"));
    EXPECT_FALSE(GetFormatSaveFlag(2, L"text"));
    EXPECT_FALSE(GetFormatSaveFlag(1, L"Text"));
    EXPECT_FALSE(GetFormatSaveFlag(3, L"a"));
    for (const int none : {-1, 0, 4})
        EXPECT_FALSE(GetFormatSaveFlag(none, L"Bitmap"));
}

TEST_F(modFormatSetTest, IsKeptUnknownFormat_FollowsTheMask) {
    const std::wstring names[] = {L"Text", L"Rich Text Format", L"DIB", L"Bitmap", L"OwnerLink", L"text"};
    const auto kept = [&names](std::int16_t mask) {
        Options().UnknownFormats = mask;
        int result = 0;
        for (std::size_t i = 0; i < std::size(names); ++i)
            result |= IsKeptUnknownFormat(names[i]) << i;
        return result;
    };
    for (std::int16_t mask = 0; mask < 16; ++mask)
        EXPECT_EQ(kept(mask), mask);
    EXPECT_EQ(kept(16), 0);
    EXPECT_EQ(kept(16 + 5), 5);
    EXPECT_EQ(kept(254), 14);
    EXPECT_EQ(kept(255), 63);
    EXPECT_EQ(kept(0x1FF), 63);
    EXPECT_EQ(kept(-1), 63);
}

TEST_F(modFormatSetTest, LoadFormatSets_WithoutAFile_MakesTheDefaultsAndSaveWritesThem) {
    EXPECT_TRUE(LoadFormatSets());
    const FormatSetList defaults = FormatSets();
    EXPECT_EQ(defaults.Count(), 2);
    EXPECT_FALSE(fake.files.Has(kFile));
    EXPECT_TRUE(SaveFormatSets());

    InitFormatSets();
    FormatSetsChanged = true;
    EXPECT_TRUE(LoadFormatSets());
    EXPECT_EQ(FormatSets(), defaults);
    EXPECT_FALSE(FormatSetsChanged);
    EXPECT_TRUE(fake.user.messages.empty());
}

TEST_F(modFormatSetTest, SaveFormatSets_Unchanged_LeavesTheFileAlone) {
    fake.files.SetBytes(kFile, "whatever");
    EXPECT_TRUE(SaveFormatSets());
    EXPECT_EQ(fake.files.Bytes(kFile), "whatever");
    EXPECT_EQ(fake.failures.Calls(Operation::FilesOpen), 0);
}

TEST_F(modFormatSetTest, SaveFormatSets_EachCallFailing_TellsOnceAndKeepsTheOldFileUnlessTheWriteFailed) {
    FormatSets() = ListNamed({L"alt"});
    ASSERT_TRUE(SaveFormatSets());
    const std::optional<std::string> old = fake.files.Bytes(kFile);
    FormatSets() = ListNamed({L"neu", L"und länger"});
    int writes = 0;
    bool saved = false;
    FailEachCall(
        fake, 3,
        [&] {
            fake.user.messages.clear();
            writes = fake.failures.Calls(Operation::FilesWrite);
        },
        [&] { saved = SaveFormatSets(); },
        [&](bool failed) {
            EXPECT_EQ(saved, !failed);
            EXPECT_EQ(fake.user.messages.size(), failed ? 1u : 0u);
            EXPECT_TRUE(FormatSetsChanged);
            if (failed && fake.failures.Calls(Operation::FilesWrite) == writes) {
                EXPECT_EQ(fake.files.Bytes(kFile), old);
            }
        });
    FormatSets().Clear();
    EXPECT_TRUE(LoadFormatSets());
    EXPECT_EQ(FormatSets(), ListNamed({L"neu", L"und länger"}));
}

TEST_F(modFormatSetTest, LoadFormatSets_EachCallFailing_TellsAndKeepsNothingHalfRead) {
    FormatSets() = ListNamed({L"eins", L"zwei"});
    ASSERT_TRUE(SaveFormatSets());
    const FormatSetList whole = FormatSets();
    bool loaded = false;
    for (const ReadFailure how : {ReadFailure::Error, ReadFailure::Short}) {
        fake.failures.readFailure = how;
        FailEachCall(
            fake, 4,
            [&] {
                InitFormatSets();
                fake.user.messages.clear();
            },
            [&] { loaded = LoadFormatSets(); },
            [&](bool failed) {
                // A file that does not seem to be there gives the defaults.
                if (failed && FormatSetsChanged) return;
                EXPECT_EQ(loaded, !failed);
                EXPECT_EQ(fake.user.messages.size(), failed ? 1u : 0u);
                EXPECT_LT(FormatSets().Count(), failed ? 2 : 3);
                if (failed && FormatSets().Count() == 1) {
                    EXPECT_EQ(FormatSets().Item(1), whole.Item(1));
                }
            });
    }
    EXPECT_EQ(FormatSets(), whole);
}

}  // namespace
