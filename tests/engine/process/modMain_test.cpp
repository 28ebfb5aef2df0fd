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

TEST_F(modMainTest, SetTopless_TellsOnlyOfARefusal) {
    const WindowHandle window = fake.windows.AddWindow(L"NXClip");
    SetTopless(window, true);
    EXPECT_TRUE(fake.windows.IsAlwaysOnTop(window));
    SetTopless(window, false);
    EXPECT_FALSE(fake.windows.IsAlwaysOnTop(window));
    EXPECT_TRUE(fake.user.messages.empty());
    fake.FailNth(Operation::WindowsSetAlwaysOnTop, 1);
    SetTopless(window, true);
    EXPECT_EQ(fake.user.LastMessage(), L"SetTopless failed");
}

}  // namespace
