#include "engine/process/ModHotKey.h"

#include "engine/process/AppTest.h"

namespace {

class ModHotKeyTest : public AppTest {
 protected:
    ~ModHotKeyTest() override {
        UnregisterActivationHotKey(window);
        EXPECT_EQ(fake.windows.AtomUses("CLIPATOM"), 0);
        EXPECT_TRUE(ActivationHotKeyIdentifier() == 0);
    }

    const WindowHandle window = fake.windows.AddWindow(L"NXClip");
};

TEST_F(ModHotKeyTest, Register_TakesTheAtomWithItsSignAsIdentifier) {
    Options().KeyActivate = L"L";
    RegisterActivationHotKey(window);
    ASSERT_EQ(fake.windows.HotKeys().size(), 1u);
    const FakeWindows::HotKey& hotKey = fake.windows.HotKeys()[0];
    EXPECT_EQ(hotKey.window, window);
    EXPECT_EQ(hotKey.modifiers, 3u);
    EXPECT_EQ(hotKey.key, static_cast<std::uint32_t>('L'));
    EXPECT_EQ(hotKey.identifier, ActivationHotKeyIdentifier());
    EXPECT_LT(hotKey.identifier, 0);
    EXPECT_EQ(hotKey.identifier, static_cast<std::int16_t>(fake.windows.AddGlobalAtom("CLIPATOM")));
    fake.windows.DeleteGlobalAtom(static_cast<std::uint16_t>(hotKey.identifier));
}

TEST_F(ModHotKeyTest, Register_WithANewLetter_FreesTheOldCombination) {
    Options().KeyActivate = L"C";
    RegisterActivationHotKey(window);
    Options().KeyActivate = L"M";
    UnregisterActivationHotKey(window);
    RegisterActivationHotKey(window);
    EXPECT_FALSE(fake.windows.PressHotKey(3, 'C'));
    EXPECT_TRUE(fake.windows.PressHotKey(3, 'M'));
    RegisterActivationHotKey(window);
    EXPECT_EQ(fake.windows.HotKeys().size(), 1u);
    EXPECT_EQ(fake.windows.AtomUses("CLIPATOM"), 1);
}

TEST_F(ModHotKeyTest, Register_RefusedIdentifier_TriesOneOfTheApplicationRange) {
    fake.FailNth(Operation::WindowsAddHotKey, 1);
    RegisterActivationHotKey(window);
    ASSERT_EQ(fake.windows.HotKeys().size(), 1u);
    EXPECT_GT(fake.windows.HotKeys()[0].identifier, 0);
    EXPECT_LE(ActivationHotKeyIdentifier(), 0xBFFF);
    UnregisterActivationHotKey(window);
    EXPECT_TRUE(fake.windows.HotKeys().empty());
}

TEST_F(ModHotKeyTest, Register_TakenCombinationOrNoAtom_OpensNoBox) {
    Options().KeyActivate = L"C";
    fake.windows.TakeHotKey(3, 'C');
    EXPECT_FALSE(RegisterActivationHotKey(window));
    EXPECT_EQ(fake.failures.Calls(Operation::WindowsAddHotKey), 2);
    EXPECT_EQ(fake.windows.HotKeys().size(), 1u);
    EXPECT_EQ(fake.windows.AtomUses("CLIPATOM"), 1);
    UnregisterActivationHotKey(window);

    Options().KeyActivate = L"D";
    fake.FailNth(Operation::WindowsAddAtom, 1);
    EXPECT_TRUE(RegisterActivationHotKey(window));
    EXPECT_TRUE(fake.windows.PressHotKey(3, 'D'));
    EXPECT_TRUE(fake.user.messages.empty());
}

TEST_F(ModHotKeyTest, HotKeyHint_NamesTheCharacterThatTheUserLosesAndWhatAnotherProgramHas) {
    Options().KeyActivate = L"L";
    RegisterActivationHotKey(window);
    for (const wchar_t letter : {L'X', L'Z'})
        fake.windows.TakeHotKey(3, letter);
    fake.windows.altGr[L'Y'] = L"y";
    fake.windows.altGr[L'A'] = L"a";
    EXPECT_EQ(HotKeyHint(L"X"), L"ALT+CTRL+X benutzt schon ein anderes Programm. Frei ist ALT+CTRL+B.");
    EXPECT_EQ(fake.windows.HotKeys().size(), 3u) << "nothing stays of the trial";
    fake.windows.altGr[L'Q'] = L"@";
    EXPECT_NE(HotKeyHint(L"Q").find(L"AltGr+Q das Zeichen \"@\""), std::wstring::npos);
    EXPECT_EQ(HotKeyHint(L"L") + HotKeyHint(L""), L"");
}

}  // namespace
