#include "engine/views/ChooserRules.h"

#include "fake/FakePlatformTest.h"

namespace {

class ChooserRulesTest : public FakePlatformTest {};

TEST_F(ChooserRulesTest, DriveAfterChange_AnUnreadableDriveIsLeft) {
    EXPECT_EQ(DriveAfterChange(L"d:", true), L"d:");
    EXPECT_TRUE(fake.user.messages.empty());
    EXPECT_EQ(DriveAfterChange(L"a:", false), L"c:");
    EXPECT_EQ(fake.user.messages.size(), 1u);
}

TEST_F(ChooserRulesTest, DirectoriesDownTo_BeginsAtTheDriveOrShare) {
    const std::pair<std::wstring, std::vector<std::wstring>> cases[] = {
        {L"C:\\", {L"C:\\"}},
        {L"C:\\a\\b\\", {L"C:\\", L"C:\\a", L"C:\\a\\b"}},
        {L"\\\\server\\share\\a", {L"\\\\server\\share", L"\\\\server\\share\\a"}},
        {L"\\\\server\\share\\", {L"\\\\server\\share"}},
    };
    for (const auto& [path, directories] : cases)
        EXPECT_EQ(DirectoriesDownTo(path), directories);
    EXPECT_EQ(DriveOf(L"C:\\a"), L"c:");
    EXPECT_EQ(DriveOf(L"\\\\server\\share\\a"), L"\\\\server\\share");
}

TEST_F(ChooserRulesTest, MatchesPattern_TakesAnyOfThem) {
    for (const wchar_t* name : {L"bild.bmp", L"BILD.DIB", L".bmp", L"a.b.bmp"}) {
        EXPECT_TRUE(MatchesPattern(name, L"*.bmp;*.dib"));
        EXPECT_TRUE(MatchesPattern(name, L" *.BMP ; *.Dib;"));
    }
    for (const wchar_t* name : {L"bild.bmpx", L"bmp", L"bild", L""}) {
        EXPECT_FALSE(MatchesPattern(name, L"*.bmp;*.dib"));
    }
    for (const wchar_t* patterns : {L"", L";", L" ; "})
        EXPECT_FALSE(MatchesPattern(L"a", patterns));
}

TEST_F(ChooserRulesTest, MakeDirectoryIn_MakesPlainNamesOnly) {
    EXPECT_EQ(MakeDirectoryIn(L"C:\\", L"Neu"), L"C:\\Neu");
    EXPECT_EQ(MakeDirectoryIn(L"C:\\Neu", L" Unter "), L"C:\\Neu\\Unter");
    EXPECT_TRUE(fake.files.IsDirectory(L"C:\\Neu\\Unter"));
    EXPECT_TRUE(fake.user.messages.empty());
    for (const wchar_t* name : {L"..", L".", L"a\\b", L"a/b", L"C:", L"a*", L"a?", L" "}) {
        EXPECT_EQ(MakeDirectoryIn(L"C:\\Neu", name), L"");
        EXPECT_EQ(fake.user.messages.back().title, L"Verzeichnisfehler");
    }
    EXPECT_EQ(fake.failures.Calls(Operation::FilesMakeDirectory), 2);
    EXPECT_EQ(MakeDirectoryIn(L"C:\\Neu", L"Unter"), L"") << "is there already";
    EXPECT_EQ(MakeDirectoryIn(L"Z:\\", L"Neu"), L"");
    EXPECT_EQ(fake.user.messages.size(), 10u);
}

}  // namespace
