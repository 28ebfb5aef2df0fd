#include "engine/views/OptionRules.h"

#include "engine/process/AppTest.h"

namespace {

class OptionRulesTest : public AppTest {};

constexpr auto On = CheckMark::On;
constexpr auto Off = CheckMark::Off;

std::wstring Passing(bool (*passes)(wchar_t)) {
    std::wstring passing;
    for (wchar_t key = 1; key < 256; ++key) {
        if (passes(key)) passing += key;
    }
    return passing;
}

TEST_F(OptionRulesTest, KeyFilters_LetExactlyTheirCharactersThrough) {
    EXPECT_EQ(Passing(ClipLenKeyPasses), L"\b0123456789");
    EXPECT_EQ(Passing([](wchar_t key) { return TextLenKeyPasses(key, 2); }), L"\b0123456789");
    EXPECT_EQ(Passing([](wchar_t key) { return TextLenKeyPasses(key, 3); }), L"");
    const std::wstring name = Passing(UnknownFormatSetKeyPasses);
    EXPECT_TRUE(name.starts_with(L"\b0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz"));
    for (const wchar_t letter : std::wstring(L"äöüÄÖÜß"))
        EXPECT_NE(name.find(letter), std::wstring::npos);
    for (const wchar_t sign : std::wstring(L" &,.-\r\x1B\x16×÷"))
        EXPECT_EQ(name.find(sign), std::wstring::npos);
}

TEST_F(OptionRulesTest, NumberFields_LeftWithoutANumber_GetTheirDefault) {
    EXPECT_EQ(ClipLenAfterLeave(L"0123456789012"), L"0123456789012");
    EXPECT_EQ(TextLenAfterLeave(L"5"), L"5");
    for (const wchar_t* text : {L"", L" ", L"-", L"1a", L"1 2"}) {
        EXPECT_EQ(ClipLenAfterLeave(text), L"0");
        EXPECT_EQ(TextLenAfterLeave(text), L"20");
    }
}

TEST_F(OptionRulesTest, KeyActivate_TakesLettersOnlyAndFallsBackToTheStoredOne) {
    EXPECT_EQ(KeyActivateAfterPress(L'q'), L"Q");
    EXPECT_EQ(KeyActivateAfterPress(L'Z'), L"Z");
    for (const wchar_t key : std::wstring(L"1ä \b@[`{"))
        EXPECT_FALSE(KeyActivateAfterPress(key));
    EXPECT_EQ(KeyActivateAfterRelease(L"", L"L"), L"L");
    EXPECT_EQ(KeyActivateAfterRelease(L"7", L"L"), L"7");
    EXPECT_EQ(KeyActivateAfterLeave(L"xyz", L"L"), L"X");
    EXPECT_EQ(KeyActivateAfterLeave(L"7", L"L"), L"L");
    EXPECT_EQ(KeyActivateAfterLeave(L"", L"x"), L"x");
}

TEST_F(OptionRulesTest, ControlsFromOptions_ThenConfirm_ChangesNothing) {
    OptionValues values;
    for (const bool odd : {false, true}) {
        values.TopWindow = values.EditPropAfterSnap = values.ShowInTray = values.ShowTooltips = odd;
        values.ShowSplash = values.SetClipByDblClick = values.SetBeep = odd;
        values.SnapSound = values.IconAfterSnap = values.StartAsIcon = values.LockEdit = !odd;
        values.AutoSnap = values.IconAfterSetClip = !odd;
        values.SoundFile = L"a.wav";
        values.UserInfo = L"Info";
        values.NewtextMode = odd;
        values.NewMaxLen = 99;
        values.MaxClipSize = 1'000'000;
        values.ActionUnknownSet = !odd;
        values.UnknownFormats = odd ? 255 : 18;
        values.UnknownSet = L"Rest";
        values.KeyActivate = L"K";
        OptionControls controls = ControlsFromOptions(values);
        OptionValues after = values;
        EXPECT_TRUE(ConfirmOptions(controls, after));
        EXPECT_EQ(after, values);
    }
}

TEST_F(OptionRulesTest, ControlsFromOptions_ShowsOddValuesByTheirRule) {
    OptionValues values;
    values.NewtextMode = 2;
    values.ActionUnknownSet = 7;
    values.UnknownFormats = 0x105;
    OptionControls controls = ControlsFromOptions(values);
    EXPECT_TRUE(controls.optFormatTitle);
    EXPECT_FALSE(controls.optTextTitle);
    EXPECT_TRUE(controls.OptFSet[1]);
    EXPECT_FALSE(controls.OptFSet[0]);
    EXPECT_EQ(controls.chkSaveUnknown, (std::array<CheckMark, 7>{Off, On, Off, On, Off, Off, Off}));
    EXPECT_TRUE(ConfirmOptions(controls, values));
    EXPECT_EQ(values.NewtextMode, 0);
    EXPECT_EQ(values.ActionUnknownSet, 1);
    EXPECT_EQ(values.UnknownFormats, 5);
}

TEST_F(OptionRulesTest, SaveAll_ChecksAndDisablesTheOthersAndLeavesTheirMarks) {
    OptionValues values;
    values.UnknownFormats = 4;
    OptionControls controls = ControlsFromOptions(values);
    EXPECT_TRUE(controls.formatBoxesEnabled);
    controls.chkSaveUnknown[6] = On;
    SaveAllClicked(controls);
    EXPECT_FALSE(controls.formatBoxesEnabled);
    EXPECT_TRUE(ConfirmOptions(controls, values));
    EXPECT_EQ(values.UnknownFormats, 255);

    controls = ControlsFromOptions(values);
    EXPECT_FALSE(controls.formatBoxesEnabled);
    controls.chkSaveUnknown[6] = controls.chkSaveUnknown[1] = Off;
    SaveAllClicked(controls);
    EXPECT_TRUE(controls.formatBoxesEnabled);
    EXPECT_TRUE(ConfirmOptions(controls, values));
    EXPECT_EQ(values.UnknownFormats, 30) << "the marks stay as they are";
}

TEST_F(OptionRulesTest, ConfirmOptions_AppliesTheLeaveRulesAndCountsGreyAsOff) {
    OptionValues values;
    OptionControls controls = ControlsFromOptions(values);
    controls.chkSplash = CheckMark::Grey;
    controls.chkSaveUnknown.fill(CheckMark::Grey);
    controls.OptFSet = {false, false};
    controls.tbTextLen = L"x";
    controls.tbClipLen = L"";
    controls.tbKeyActivate = L"9";
    EXPECT_TRUE(ConfirmOptions(controls, values));
    EXPECT_FALSE(values.ShowSplash);
    EXPECT_EQ(values.UnknownFormats, 0);
    EXPECT_EQ(values.ActionUnknownSet, -1);
    EXPECT_EQ(values.NewMaxLen, 20);
    EXPECT_EQ(values.MaxClipSize, 0);
    EXPECT_EQ(values.KeyActivate, L"C");
}

TEST_F(OptionRulesTest, ConfirmOptions_NumberTooLarge_TellsAndKeepsEveryValue) {
    const OptionValues before;
    for (const auto field : {&OptionControls::tbClipLen, &OptionControls::tbTextLen}) {
        OptionValues values = before;
        OptionControls controls = ControlsFromOptions(values);
        controls.chkTopWindow = On;
        controls.*field = L"99999999999";
        EXPECT_FALSE(ConfirmOptions(controls, values));
        EXPECT_EQ(values, before);
    }
    EXPECT_EQ(fake.user.messages.size(), 2u);
}

}  // namespace
