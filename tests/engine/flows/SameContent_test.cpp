#include "engine/flows/SameContent.h"

#include "engine/clipboard/ClipboardTest.h"
#include "engine/profiles/ProfileWorldTest.h"

namespace {

class SameContentTest : public ProfileWorldTest {
 protected:
    // The clip that holds what is offered, or "none".
    std::wstring SameAs(const std::string& bytes) {
        fake.files.SetBytes(L"C:\\NEW.NXC", bytes);
        const Node* const clip = NewestClipIfSame(folder, L"C:\\NEW.NXC");
        return clip != nullptr ? clip->Text() : L"none";
    }
    void Hold(const Node& clip, const std::string& bytes) { fake.files.SetBytes(ClipFileOf(&clip), bytes); }

    Node& profile = AddProfile(L"P");
    Node& folder = AddFolder(profile, L"F");
};

TEST_F(SameContentTest, NewestClipIfSame_ComparesTheNewestClipOfTheContainerRecordByRecord) {
    const std::string text = RecordBytes(1, "Text", std::string(200'000, 'a'));
    const std::string other = RecordBytes(0xC100, "Other", "x");
    EXPECT_EQ(SameAs(text), L"none");
    Hold(AddClip(folder, L"old"), other);
    Hold(AddClip(folder, L"new"), text + other);
    Hold(AddClip(AddFolder(folder, L"below"), L"deeper"), text);
    Hold(AddClip(profile, L"beside"), text);
    EXPECT_EQ(SameAs(text + other), L"new");
    EXPECT_EQ(SameAs(text + RecordBytes(0xC200, "Other", "x")), L"new") << "registered anew";
    for (const std::string& different :
         {text, other, other + text, text + other + text, text + RecordBytes(0xC100, "Other", "y"),
          text + RecordBytes(0xC100, "Other2", "x"), text + other.substr(0, other.size() - 1),
          RecordBytes(1, "Text", std::string(200'000, 'a') + 'b') + other,
          RecordBytes(7, "OEM-Text", std::string(200'000, 'a')) + other})
        EXPECT_EQ(SameAs(different), L"none");

    for (int failing = 1; failing <= 12; ++failing) {
        fake.FailNth(Operation::FilesRead, failing);
        EXPECT_EQ(SameAs(text + other), L"none") << failing;
    }
    fake.files.Remove(ClipFileOf(&Get(L"new")));
    EXPECT_EQ(SameAs(text + other), L"none");
}

// Two copies of one text by the same program.
TEST_F(SameContentTest, NewestClipIfSame_LeavesOutWhatIsNotContent) {
    const auto copy = [](const std::string& junk, const std::string& letter = "a") {
        const std::string wide = letter + std::string("\0\0\x61\0\0", 6);
        return RecordBytes(13, "Unicode", wide + junk) + RecordBytes(7, "OEM-Text", letter + '\0' + junk) +
               RecordBytes(0xC100, "HTML Format", "<b>" + letter + '\0' + junk) +
               RecordBytes(0xC101, "GTK_TEXT_BUFFER_CONTENTS", junk) +
               RecordBytes(0xC102, "Wine Marshalled DataObject", junk);
    };
    Hold(AddClip(folder, L"clip"), copy("junk"));
    EXPECT_EQ(SameAs(copy("other junk")), L"clip");
    EXPECT_EQ(SameAs(copy("junk", "b")), L"none");
    Hold(Get(L"clip"), RecordBytes(0xC103, "Private", std::string("a\0junk", 6)));
    EXPECT_EQ(SameAs(RecordBytes(0xC103, "Private", std::string("a\0muck", 6))), L"none");
}

}  // namespace
