#include "engine/views/OptionRules.h"

#include <algorithm>

#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

constexpr wchar_t kBackspace = 8;
constexpr int kSaveAllBox = 6;
constexpr std::int16_t kAllFormats = 255;

bool IsDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

bool IsLatinLetter(wchar_t character) {
    return (character >= L'A' && character <= L'Z') || (character >= L'a' && character <= L'z');
}

// A letter of any alphabet that knows capitals, and the one German letter that has none.
bool IsLetter(wchar_t character) {
    const std::wstring text(1, character);
    return UpperCase(text) != LowerCase(text) || character == L'ß';
}

// A whole number, however large.
bool IsNumeric(const std::wstring& text) {
    std::wstring digits = Trim(text);
    if (!digits.empty() && (digits.front() == L'-' || digits.front() == L'+')) digits.erase(0, 1);
    return !digits.empty() && std::all_of(digits.begin(), digits.end(), IsDigit);
}

CheckMark MarkOf(bool on) {
    return on ? CheckMark::On : CheckMark::Off;
}

// The check boxes and the flags they stand for.
struct FlagControl {
    CheckMark OptionControls::*box;
    bool OptionValues::*flag;
};

constexpr FlagControl kFlagControls[] = {
    {&OptionControls::chkTopWindow, &OptionValues::TopWindow},
    {&OptionControls::chkSound, &OptionValues::SnapSound},
    {&OptionControls::chkSnapDialog, &OptionValues::EditPropAfterSnap},
    {&OptionControls::chkIconAfterSnap, &OptionValues::IconAfterSnap},
    {&OptionControls::chkTray, &OptionValues::ShowInTray},
    {&OptionControls::chkIcon, &OptionValues::StartAsIcon},
    {&OptionControls::chkTooltips, &OptionValues::ShowTooltips},
    {&OptionControls::chkLock, &OptionValues::LockEdit},
    {&OptionControls::chkSplash, &OptionValues::ShowSplash},
    {&OptionControls::chkAutoSnap, &OptionValues::AutoSnap},
    {&OptionControls::chkDblClick, &OptionValues::SetClipByDblClick},
    {&OptionControls::chkIconAfterSet, &OptionValues::IconAfterSetClip},
    {&OptionControls::chkSetBeep, &OptionValues::SetBeep},
};

std::int16_t MaskOf(const OptionControls& controls) {
    int mask = 0;
    for (int box = 1; box <= kSaveAllBox; ++box) {
        if (controls.chkSaveUnknown[box] == CheckMark::On) mask |= UnknownFormatBit(box);
    }
    return static_cast<std::int16_t>(mask);
}

std::int16_t SelectedAction(const OptionControls& controls) {
    const auto& buttons = controls.OptFSet;
    const auto selected = std::find(buttons.begin(), buttons.end(), true);
    return static_cast<std::int16_t>(selected == buttons.end() ? -1 : selected - buttons.begin());
}

template <typename Number>
Number Converted(const std::optional<Number>& number) {
    if (!number) throw RuntimeError(ErrorNumber::Overflow);
    return *number;
}

OptionValues ValuesFromControls(const OptionControls& controls, const OptionValues& before) {
    OptionValues values = before;
    for (const FlagControl& control : kFlagControls) {
        values.*control.flag = controls.*control.box == CheckMark::On;
    }
    values.SoundFile = controls.tbSoundFile;
    values.UserInfo = controls.tbInfo;
    values.NewtextMode = controls.optTextTitle ? 1 : 0;
    values.NewMaxLen = Converted(ParseInt16(controls.tbTextLen));
    values.MaxClipSize = Converted(ParseInt32(controls.tbClipLen));
    values.ActionUnknownSet = SelectedAction(controls);
    values.UnknownFormats = MaskOf(controls);
    values.UnknownSet = controls.tbUnknownFormatSet;
    values.KeyActivate = controls.tbKeyActivate;
    return values;
}

}  // namespace

int UnknownFormatBit(int box) {
    return box == kSaveAllBox ? kAllFormats : 1 << (box - 1);
}

OptionControls ControlsFromOptions(const OptionValues& values) {
    OptionControls controls;
    for (const FlagControl& control : kFlagControls) {
        controls.*control.box = MarkOf(values.*control.flag);
    }
    controls.tbSoundFile = values.SoundFile;
    controls.tbInfo = values.UserInfo;
    controls.tbTextLen = NumberText(values.NewMaxLen);
    controls.tbClipLen = NumberText(values.MaxClipSize);
    controls.tbUnknownFormatSet = values.UnknownSet;
    controls.tbKeyActivate = values.KeyActivate;
    controls.optTextTitle = values.NewtextMode == 1;
    controls.optFormatTitle = !controls.optTextTitle;
    controls.OptFSet[1] = values.ActionUnknownSet != 0;
    controls.OptFSet[0] = !controls.OptFSet[1];
    for (int box = 1; box < kSaveAllBox; ++box) {
        const int bit = UnknownFormatBit(box);
        controls.chkSaveUnknown[box] = MarkOf((values.UnknownFormats & bit) == bit);
    }
    controls.chkSaveUnknown[kSaveAllBox] = MarkOf(values.UnknownFormats == kAllFormats);
    controls.formatBoxesEnabled = values.UnknownFormats != kAllFormats;
    return controls;
}

void SaveAllClicked(OptionControls& controls) {
    const bool all = controls.chkSaveUnknown[kSaveAllBox] == CheckMark::On;
    controls.formatBoxesEnabled = !all;
    if (!all) return;
    for (int box = 1; box < kSaveAllBox; ++box) {
        controls.chkSaveUnknown[box] = CheckMark::On;
    }
}

bool ConfirmOptions(OptionControls& controls, OptionValues& values) {
    controls.tbTextLen = TextLenAfterLeave(controls.tbTextLen);
    controls.tbClipLen = ClipLenAfterLeave(controls.tbClipLen);
    controls.tbKeyActivate = KeyActivateAfterLeave(controls.tbKeyActivate, values.KeyActivate);
    return Succeeds([&] { values = ValuesFromControls(controls, values); });
}

bool ClipLenKeyPasses(wchar_t key) {
    return IsDigit(key) || key == kBackspace;
}

bool TextLenKeyPasses(wchar_t key, std::size_t length) {
    return length < 3 && (IsDigit(key) || key == kBackspace);
}

bool UnknownFormatSetKeyPasses(wchar_t key) {
    return IsLetter(key) || IsDigit(key) || key == L'_' || key == kBackspace;
}

std::wstring ClipLenAfterLeave(const std::wstring& text) {
    return IsNumeric(text) ? text : L"0";
}

std::wstring TextLenAfterLeave(const std::wstring& text) {
    return IsNumeric(text) ? text : L"20";
}

std::optional<std::wstring> KeyActivateAfterPress(wchar_t key) {
    if (!IsLatinLetter(key)) return std::nullopt;
    return std::wstring(1, key >= L'a' ? static_cast<wchar_t>(key - L'a' + L'A') : key);
}

std::wstring KeyActivateAfterRelease(const std::wstring& text, const std::wstring& stored) {
    return text.empty() ? stored : text;
}

std::wstring KeyActivateAfterLeave(const std::wstring& text, const std::wstring& stored) {
    if (text.empty()) return stored;
    return KeyActivateAfterPress(text.front()).value_or(stored);
}
