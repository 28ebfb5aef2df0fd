#include "engine/search/ContentSearch.h"

#include <algorithm>
#include <random>
#include <set>

#include "engine/profiles/ProfileWorldTest.h"
#include "engine/search/NodeSearch.h"
#include "platform/ByteBuffer.h"

namespace {

struct Format {
    std::int32_t id;
    std::string name;
    std::string data;
};

std::string ClipFile(const std::vector<Format>& formats) {
    ByteWriter writer;
    for (const Format& format : formats) {
        writer.Int32(format.id);
        writer.Int16(static_cast<std::int16_t>(format.name.size()));
        writer.Bytes(format.name.data(), format.name.size());
        writer.Int32(static_cast<std::int32_t>(format.data.size()));
        writer.Bytes(format.data.data(), format.data.size());
    }
    return {writer.Image().begin(), writer.Image().end()};
}

std::string Utf16(const std::wstring& text) {
    const std::u16string units = Utf16FromText(text);
    return std::string(reinterpret_cast<const char*>(units.data()), 2 * units.size()) + std::string(2, '\0');
}

// Each character as an entity or a control word where that is another one.
std::string Marked(const std::wstring& text, const char* before, const char* behind) {
    std::string bytes;
    for (const wchar_t character : text) {
        if (character < 0x80)
            bytes += static_cast<char>(character);
        else
            bytes += before + std::to_string(static_cast<int>(character)) + behind;
    }
    return bytes;
}

Format Unicode(const std::wstring& text) {
    return {13, "Unicode", Utf16(text)};
}
Format Ansi(const std::wstring& text) {
    return {1, "Text", AnsiFromText(text) + '\0'};
}
Format Html(const std::wstring& text) {
    return {0xC123, "HTML Format", "<html><p class='titel'>" + Marked(text, "&#", ";") + "</p></html>"};
}
Format RichText(const std::wstring& text) {
    return {0xC124, "Rich Text Format", "{\\rtf1{\\fonttbl{\\f0 titel;}}" + Marked(text, "\\u", "?") + "}"};
}
Format FileList(const std::wstring& text) {
    const std::string header("\x14\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\1\0\0\0", 20);
    return {15, "Files", header + Utf16(L"C:\\" + text + L".txt") + std::string(2, '\0')};
}
Format Picture(std::size_t size) {
    return {8, "DIB", std::string(size, 'w')};
}

// Keeps all that a search finds.
struct Kept : SearchSink {
    bool GoesOn(std::size_t clip) override { return clip < endsAt; }
    void Found(std::size_t clip, ContentHit hit) override { hits.emplace(clip, std::move(hit)); }
    void Unreadable(std::size_t clip) override { unreadable.insert(clip); }

    std::size_t endsAt = static_cast<std::size_t>(-1);
    std::map<std::size_t, ContentHit> hits;
    std::set<std::size_t> unreadable;
};

class ContentSearchTest : public ProfileWorldTest {
 protected:
    void SetUp() override { profile = &AddProfile(L"P"); }

    Node& Clip(const std::wstring& name, const std::vector<Format>& formats, const std::wstring& info = L"") {
        Node& clip = AddClip(*profile, name, info);
        clip.SetTag(MakeClipTag(ClipNumberOf(&clip), static_cast<std::int16_t>(formats.size()),
                                L"15.11.1999 13:10:00", info));
        fake.files.SetBytes(ClipFileOf(&clip), ClipFile(formats));
        return clip;
    }

    // The names of what fits, in the order of the tree, with the line of each hit's content in brackets.
    std::wstring Hits(const std::wstring& query, Likeness likeness = Likeness::Marks) {
        const SearchedTree searched =
            SearchTree(nullptr, nodes, ParseSearchQuery(query), likeness, fake.clock.now);
        Kept found;
        ContentSearch(fake.files, searched.plan).Run(found);
        std::wstring names;
        for (const FoundByName& one : searched.found)
            names += one.node->Text() + L' ';
        for (const auto& [clip, hit] : found.hits) {
            names += searched.clips[clip]->Text();
            if (hit.record >= 0) {
                const HitLine& line = hit.line;
                names += L'(' + line.text.substr(0, line.begin) + L'[' +
                         line.text.substr(line.begin, line.size) + L']' +
                         line.text.substr(line.begin + line.size) + L')';
            }
            names += L' ';
        }
        return names;
    }

    Node* profile = nullptr;
};

}  // namespace

TEST_F(ContentSearchTest, Run_FindsWhatAPlainSearchFindsInFiveKinds) {
    constexpr std::size_t kClips = 10'000;
    const std::vector<std::wstring> vocabulary = {L"Straße",    L"über", L"Angebot", L"Öl",
                                                  L"Titelbild", L"x",    L"naïve"};
    using Make = Format (*)(const std::wstring&);
    const std::vector<Make> kinds = {Unicode, Ansi, Html, RichText, FileList};
    std::mt19937 random(7);
    std::vector<std::wstring> texts;
    SearchPlan plan;
    plan.directories = {L"C:\\P"};
    for (std::size_t i = 0; i < kClips; ++i) {
        std::wstring text;
        // Now and then the words stand where a read ends: one of bytes, or of units of two.
        if (i % 333 == 7) text.append((i % 2 == 0 ? 65'500 : 131'040) + random() % 60, L'.');
        for (std::size_t words = random() % 6; words > 0; --words)
            text += L" " + vocabulary[random() % vocabulary.size()];
        const auto number = static_cast<std::int32_t>(i + 1);
        std::vector<Format> formats = {Picture(random() % 40 == 0 ? 20'000 : 10),
                                       kinds[i % kinds.size()](text)};
        if (random() % 2 == 0) std::swap(formats[0], formats[1]);
        fake.files.SetBytes(ClipFilePath(L"C:\\P", number), ClipFile(formats));
        texts.push_back(UpperCase(text));
        plan.clips.push_back({0, number, 2, 0});
    }
    for (const wchar_t* const typed : {L"straße", L"ÜBER", L"öl angebot", L"\"x über\""}) {
        plan.query = ParseSearchQuery(typed);
        Kept found;
        ContentSearch(fake.files, plan).Run(found);
        std::size_t expected = 0;
        for (std::size_t i = 0; i < kClips; ++i) {
            const bool fits = std::ranges::all_of(plan.query.words, [&](const SearchWord& word) {
                return texts[i].find(UpperCase(TextFromUtf16(word.text))) != std::wstring::npos;
            });
            expected += fits ? 1 : 0;
            ASSERT_EQ(found.hits.contains(i), fits)
                << "clip " << i << " " << AnsiFromText(texts[i].substr(0, 80));
        }
        EXPECT_GT(expected, 50u);
    }
}

TEST_F(ContentSearchTest, Search_JoinsNameInfoAndContent) {
    AddFolder(*profile, L"Angebote Müller");
    Clip(L"Angebot", {Unicode(L"an Müller\r\nund Söhne")});
    Clip(L"Brief", {Html(L"Herr Müller")}, L"Angebot 7");
    Clip(L"Leer", {Picture(100)}, L"Müller");
    EXPECT_EQ(Hits(L"müller angebot"), L"Angebote Müller Angebot(an [Müller]) Brief(Herr [Müller]) ");
    EXPECT_EQ(Hits(L"name:brief müller"), L"Brief(Herr [Müller]) ");
    EXPECT_EQ(Hits(L"\"müller und\""), L"") << "a line's end is no blank";
    EXPECT_EQ(Hits(L"typ:bild"), L"Leer ");
    EXPECT_EQ(Hits(L"typ:html|bild müller"), L"Brief(Herr [Müller]) Leer ");
    EXPECT_EQ(Hits(L"angebot typ:bilt"), L"");
}

TEST_F(ContentSearchTest, Search_ByLettersFindsWhatHasMarks) {
    Clip(L"eins", {Unicode(L"die Straße u\x0308"
                           L"ber Ägypten")});
    Clip(L"zwei", {Ansi(L"Strasse")});
    EXPECT_EQ(Hits(L"strasse"), L"zwei([Strasse]) ");
    EXPECT_EQ(Hits(L"strasse", Likeness::Letters),
              L"eins(die [Straße] u\x0308"
              L"ber Ägypten) zwei([Strasse]) ");
    EXPECT_EQ(Hits(L"uber agypten", Likeness::Letters),
              L"eins(die Straße [u\x0308"
              L"ber] Ägypten) ");
    EXPECT_EQ(Hits(L"\"strasse\"", Likeness::Letters), L"zwei([Strasse]) ") << "as it stands";
}

TEST_F(ContentSearchTest, Search_NarrowsByFilesAndAge) {
    Clip(L"alt", {FileList(L"Bericht")});
    fake.clock.Advance(std::chrono::hours(24 * 5));
    Clip(L"neu", {Unicode(L"Bericht")});
    EXPECT_EQ(Hits(L"bericht"), L"alt(C:\\[Bericht].txt) neu([Bericht]) ");
    EXPECT_EQ(Hits(L"datei:bericht"), L"alt(C:\\[Bericht].txt) ");
    EXPECT_EQ(Hits(L"seit:3 bericht"), L"neu([Bericht]) ");
    EXPECT_EQ(Hits(L"seit:3"), L"neu ");
}

TEST_F(ContentSearchTest, Run_ReadsALongTextUpToItsFirstZero) {
    const std::wstring much(200'000, L'.');
    Clip(L"a", {Unicode(much + L" wort" + L'\0' + much)});
    Clip(L"b", {Unicode(much + L'\0' + much + L" wort")});
    Clip(L"c", {Unicode(much + L" wor" + L'\0' + L't')});
    const SearchedTree searched =
        SearchTree(nullptr, nodes, ParseSearchQuery(L"wort"), Likeness::Marks, fake.clock.now);
    Kept found;
    ContentSearch(fake.files, searched.plan).Run(found);
    ASSERT_EQ(found.hits.size(), 1u);
    EXPECT_EQ(found.hits.at(0).begin, much.size() + 1);
}

TEST_F(ContentSearchTest, Run_PassesByWhatItCannotReadAndEndsWhenTold) {
    Clip(L"a", {Unicode(L"wort")});
    Node& gone = Clip(L"b", {Unicode(L"wort")});
    Node& damaged = Clip(L"c", {Picture(20'000), Unicode(L"wort")});
    Clip(L"d", {Unicode(L"wort")});
    fake.files.Vanish(ClipFileOf(&gone));
    fake.files.SetBytes(ClipFileOf(&damaged), fake.files.Bytes(ClipFileOf(&damaged))->substr(0, 20'030));
    const SearchedTree searched =
        SearchTree(nullptr, nodes, ParseSearchQuery(L"wort"), Likeness::Marks, fake.clock.now);
    Kept found;
    ContentSearch(fake.files, searched.plan).Run(found);
    EXPECT_EQ(found.hits.size(), 2u);
    EXPECT_EQ(found.unreadable, std::set<std::size_t>{1});
    Kept ended;
    ended.endsAt = 3;
    ContentSearch(fake.files, searched.plan).Run(ended);
    EXPECT_EQ(ended.hits.size(), 1u);
}
