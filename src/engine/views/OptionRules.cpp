#include "engine/views/OptionRules.h"

#include <algorithm>

#include "engine/process/OptionTable.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "resources/controls.h"

namespace {

constexpr wchar_t kBackspace = 8;
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

// A box of chkSaveUnknown, from 1, as its bit in the mask UnknownFormats.
int UnknownFormatBit(int box) {
    return 1 << (box - 1);
}

std::int16_t MaskOf(const OptionControls& controls) {
    if (controls.marks.at(kSaveAllBox)) return kAllFormats;
    int mask = 0;
    for (int box = 1; box <= kFormatBoxes; ++box) {
        if (controls.marks.at(chkSaveUnknown + box)) mask |= UnknownFormatBit(box);
    }
    return static_cast<std::int16_t>(mask);
}

// The first button of the pair that is chosen: 0 "Ignorieren", 1 "Anlegen mit Namen".
std::int16_t SelectedAction(const OptionControls& controls) {
    if (controls.marks.at(OptFSet)) return 0;
    return controls.marks.at(OptFSet + 1) ? 1 : -1;
}

OptionValues ValuesFromControls(const OptionControls& controls, const OptionValues& before) {
    OptionValues values = before;
    for (const OptionRow& row : OptionRows()) {
        if (row.control == 0) continue;
        const std::wstring text = !IsFlag(row)                     ? controls.texts.at(row.control)
                                  : controls.marks.at(row.control) ? L"1"
                                                                   : L"0";
        if (!SetOption(row, values, text)) throw RuntimeError(ErrorNumber::Overflow);
    }
    values.NewtextMode = controls.marks.at(optTextTitle) ? 1 : 0;
    values.ActionUnknownSet = SelectedAction(controls);
    values.UnknownFormats = MaskOf(controls);
    return values;
}

std::wstring KeyActivateAfterLeave(const std::wstring& text, const std::wstring& stored) {
    if (text.empty()) return stored;
    return KeyActivateAfterPress(text.front()).value_or(stored);
}

}  // namespace

OptionControls ControlsFromOptions(const OptionValues& values) {
    OptionControls controls;
    for (const OptionRow& row : OptionRows()) {
        if (row.control == 0) continue;
        const std::wstring text = OptionText(row, values);
        if (IsFlag(row)) {
            controls.marks[row.control] = text == L"1";
        } else {
            controls.texts[row.control] = text;
        }
    }
    controls.marks[optTextTitle] = values.NewtextMode == 1;
    controls.marks[optFormatTitle] = values.NewtextMode != 1;
    controls.marks[OptFSet] = values.ActionUnknownSet == 0;
    controls.marks[OptFSet + 1] = values.ActionUnknownSet != 0;
    for (int box = 1; box <= kFormatBoxes; ++box) {
        controls.marks[chkSaveUnknown + box] = (values.UnknownFormats & UnknownFormatBit(box)) != 0;
    }
    controls.marks[kSaveAllBox] = values.UnknownFormats == kAllFormats;
    controls.formatBoxesEnabled = values.UnknownFormats != kAllFormats;
    return controls;
}

void SaveAllClicked(OptionControls& controls) {
    const bool all = controls.marks.at(kSaveAllBox);
    controls.formatBoxesEnabled = !all;
    if (!all) return;
    for (int box = 1; box <= kFormatBoxes; ++box) {
        controls.marks[chkSaveUnknown + box] = true;
    }
}

bool ConfirmOptions(OptionControls& controls, OptionValues& values) {
    for (auto& [textBox, text] : controls.texts)
        text = TextAfterLeave(textBox, text, values);
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

std::wstring TextAfterLeave(int textBox, const std::wstring& text, const OptionValues& stored) {
    switch (textBox) {
        case tbClipLen:
        case tbMostClips:
            return IsNumeric(text) ? text : L"0";
        case tbTextLen:
            return IsNumeric(text) ? text : L"20";
        case tbDeletedDays:
            return IsNumeric(text) ? text : L"30";
        case tbKeyActivate:
            return KeyActivateAfterLeave(text, stored.KeyActivate);
        default:
            return text;
    }
}

std::optional<std::wstring> KeyActivateAfterPress(wchar_t key) {
    if (!IsLatinLetter(key)) return std::nullopt;
    return std::wstring(1, key >= L'a' ? static_cast<wchar_t>(key - L'a' + L'A') : key);
}

std::wstring KeyActivateAfterRelease(const std::wstring& text, const std::wstring& stored) {
    return text.empty() ? stored : text;
}
