#include "engine/views/OptionRules.h"

#include "engine/process/AppTest.h"
#include "engine/process/OptionTable.h"
#include "resources/controls.h"

namespace {

class OptionRulesTest : public AppTest {};

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

TEST_F(OptionRulesTest, TextAfterLeave_GivesANumberFieldItsDefault) {
    EXPECT_EQ(TextAfterLeave(tbClipLen, L"0123456789012", {}), L"0123456789012");
    EXPECT_EQ(TextAfterLeave(tbTextLen, L"5", {}), L"5");
    EXPECT_EQ(TextAfterLeave(tbInfo, L"", {}), L"");
    for (const wchar_t* text : {L"", L" ", L"-", L"1a", L"1 2"}) {
        EXPECT_EQ(TextAfterLeave(tbClipLen, text, {}), L"0");
        EXPECT_EQ(TextAfterLeave(tbTextLen, text, {}), L"20");
    }
}

TEST_F(OptionRulesTest, KeyActivate_TakesLettersOnlyAndFallsBackToTheStoredOne) {
    EXPECT_EQ(KeyActivateAfterPress(L'q'), L"Q");
    EXPECT_EQ(KeyActivateAfterPress(L'Z'), L"Z");
    for (const wchar_t key : std::wstring(L"1ä \b@[`{"))
        EXPECT_FALSE(KeyActivateAfterPress(key));
    EXPECT_EQ(KeyActivateAfterRelease(L"", L"L"), L"L");
    EXPECT_EQ(KeyActivateAfterRelease(L"7", L"L"), L"7");
    OptionValues stored;
    stored.KeyActivate = L"x";
    EXPECT_EQ(TextAfterLeave(tbKeyActivate, L"yz", stored), L"Y");
    EXPECT_EQ(TextAfterLeave(tbKeyActivate, L"7", stored), L"x");
    EXPECT_EQ(TextAfterLeave(tbKeyActivate, L"", stored), L"x");
}

TEST_F(OptionRulesTest, ConfirmOptions_EachControlChangesItsOwnOption) {
    const OptionValues before;
    for (const OptionRow& row : OptionRows()) {
        OptionControls controls = ControlsFromOptions(before);
        OptionValues expected = before;
        if (row.control != 0) {
            const std::wstring text = row.control == tbKeyActivate      ? L"K"
                                      : OptionText(row, before) == L"1" ? L"0"
                                                                        : L"1";
            ASSERT_TRUE(SetOption(row, expected, text));
            if (IsFlag(row)) controls.marks.at(row.control) = text == L"1";
            if (!IsFlag(row)) controls.texts.at(row.control) = text;
        }
        OptionValues after = before;
        EXPECT_TRUE(ConfirmOptions(controls, after));
        EXPECT_EQ(after, expected);
    }
}

TEST_F(OptionRulesTest, SaveAll_ChecksAndDisablesTheOthersAndLeavesTheirMarks) {
    OptionValues values;
    values.UnknownFormats = 4;
    OptionControls controls = ControlsFromOptions(values);
    EXPECT_TRUE(controls.formatBoxesEnabled);
    controls.marks[chkSaveUnknown + 6] = true;
    SaveAllClicked(controls);
    EXPECT_FALSE(controls.formatBoxesEnabled);
    EXPECT_TRUE(ConfirmOptions(controls, values));
    EXPECT_EQ(values.UnknownFormats, 255);

    controls = ControlsFromOptions(values);
    EXPECT_FALSE(controls.formatBoxesEnabled);
    controls.marks[chkSaveUnknown + 6] = false;
    controls.marks[chkSaveUnknown + 1] = false;
    SaveAllClicked(controls);
    EXPECT_TRUE(controls.formatBoxesEnabled);
    EXPECT_TRUE(ConfirmOptions(controls, values));
    EXPECT_EQ(values.UnknownFormats, 30) << "the marks stay as they are";
}

TEST_F(OptionRulesTest, ConfirmOptions_AppliesTheLeaveRulesOrKeepsEveryValue) {
    OptionValues values;
    OptionControls controls = ControlsFromOptions(values);
    controls.marks[OptFSet + 1] = false;
    controls.texts[tbTextLen] = L"x";
    controls.texts[tbClipLen] = L"";
    controls.texts[tbKeyActivate] = L"9";
    EXPECT_TRUE(ConfirmOptions(controls, values));
    EXPECT_EQ(values.ActionUnknownSet, -1);
    EXPECT_EQ(values.NewMaxLen, 20);
    EXPECT_EQ(values.MaxClipSize, 0);
    EXPECT_EQ(values.KeyActivate, L"C");

    const OptionValues before = values;
    for (const int textBox : {tbClipLen, tbTextLen}) {
        controls = ControlsFromOptions(values);
        controls.marks[chkTopWindow] = true;
        controls.texts[textBox] = L"99999999999";
        EXPECT_FALSE(ConfirmOptions(controls, values));
        EXPECT_EQ(values, before);
        EXPECT_EQ(fake.user.LastMessage(), L"Überlauf");
        fake.user.messages.clear();
    }
}

}  // namespace
