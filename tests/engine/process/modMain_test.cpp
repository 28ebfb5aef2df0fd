#include "engine/process/modMain.h"

#include "engine/process/AppTest.h"

namespace {

class modMainTest : public AppTest {};

TEST_F(modMainTest, AddBackslash_TrimsCapitalisesAndEndsWithOneBackslash) {
    EXPECT_EQ(AddBackslash(L" c:\\data "), L"C:\\DATA\\");
    EXPECT_EQ(AddBackslash(L"c:\\data\\"), L"C:\\DATA\\");
    EXPECT_EQ(AddBackslash(L"D:\\Übersicht"), L"D:\\ÜBERSICHT\\");
    EXPECT_EQ(AddBackslash(L""), L"\\");
}

}  // namespace
