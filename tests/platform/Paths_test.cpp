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
