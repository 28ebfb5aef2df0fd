#include "platform/Paths.h"

#include <gtest/gtest.h>

namespace {

TEST(Paths, DirectoryAbove_EndsAtTheRoot) {
    EXPECT_EQ(DirectoryAbove(L"C:\\a\\b\\"), L"C:\\a");
    EXPECT_EQ(DirectoryAbove(L"C:\\a"), L"C:\\");
    EXPECT_EQ(DirectoryAbove(L"C:\\"), L"C:\\");
    // However a path looks, going up comes to an end.
    for (std::wstring path : {L"\\\\server\\share\\a", L"\\", L"\\\\", L"a\\b\\\\", L"C:", L""}) {
        int steps = 0;
        for (; !path.empty() && steps < 10; ++steps)
            path = DirectoryAbove(path);
        EXPECT_LT(steps, 10);
    }
}

TEST(Paths, PartsOfAPath_FitTogether) {
    EXPECT_EQ(DirectoryOf(L"C:\\a\\b.nxp"), L"C:\\a");
    EXPECT_EQ(DirectoryOf(L"C:\\b.nxp"), L"C:\\");
    EXPECT_EQ(DirectoryOf(L"b.nxp"), L"");
    EXPECT_EQ(LastPartOf(L"C:\\a\\b.nxp"), L"b.nxp");
    EXPECT_EQ(LastPartOf(L"b.nxp"), L"b.nxp");
    EXPECT_EQ(LastPartOf(L"C:\\a\\"), L"");
    for (const std::wstring path : {L"C:\\b.nxp", L"C:\\a\\b.nxp", L"\\\\server\\share\\b"}) {
        EXPECT_EQ(JoinDirectory(DirectoryOf(path), LastPartOf(path)), path);
    }
    EXPECT_EQ(WithoutBackslash(L"C:\\a\\"), L"C:\\a");
    EXPECT_EQ(WithoutBackslash(L"C:\\"), L"C:\\");
    EXPECT_EQ(WithoutBackslash(L""), L"");
}

TEST(Paths, IsFullPath_TellsPathsThatDependOnWhereTheProgramStands) {
    for (const wchar_t* path : {L"C:\\", L"z:\\a", L"\\\\server\\share"})
        EXPECT_TRUE(IsFullPath(path));
    for (const wchar_t* path : {L"", L"a", L"\\a", L"C:", L"C:a", L"1:\\a", L"\\\\", L"\\\\\\a"}) {
        EXPECT_FALSE(IsFullPath(path));
    }
}

TEST(Paths, WithLongPathPrefix_OnlyLongPathsGetOne) {
    const std::wstring limit = L"C:\\" + std::wstring(243, L'a'), longer = limit + L"a";
    EXPECT_EQ(WithLongPathPrefix(limit), limit);
    EXPECT_EQ(WithLongPathPrefix(longer), L"\\\\?\\" + longer);
    EXPECT_EQ(WithLongPathPrefix(L"\\\\?\\" + longer), L"\\\\?\\" + longer);
    EXPECT_EQ(WithLongPathPrefix(L"\\\\server\\" + longer.substr(3)),
              L"\\\\?\\UNC\\server\\" + longer.substr(3));
}

}  // namespace
