#include "engine/flows/SameContent.h"

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

TEST_F(SameContentTest, NewestClipIfSame_ComparesTheNewestClipOfTheContainerToTheLastByte) {
    EXPECT_EQ(SameAs("x"), L"none");
    const std::string large(200'000, 'a');
    Hold(AddClip(folder, L"old"), "old");
    Hold(AddClip(folder, L"new"), large);
    Hold(AddClip(AddFolder(folder, L"below"), L"deeper"), "deeper");
    Hold(AddClip(profile, L"beside"), "beside");
    EXPECT_EQ(SameAs(large), L"new");
    for (const std::string& other : {large + "b", large.substr(1), large.substr(1) + "b", std::string("old"),
                                     std::string("deeper"), std::string("beside")})
        EXPECT_EQ(SameAs(other), L"none");

    fake.FailNth(Operation::FilesRead, 3);
    EXPECT_EQ(SameAs(large), L"none");
    fake.files.Remove(ClipFileOf(&Get(L"new")));
    EXPECT_EQ(SameAs(large), L"none");
}

}  // namespace
