#include "engine/process/OptionTable.h"

#include <optional>

#include "platform/Text.h"
#include "platform/VisitVariant.h"
#include "resources/controls.h"

namespace {

using O = OptionValues;
constexpr OptionRow kRows[] = {
    {L"TopWindow", L"0", &O::TopWindow, chkTopWindow},
    {L"SnapSound", L"0", &O::SnapSound, chkSound},
    {L"SoundFile", L"", &O::SoundFile, tbSoundFile},
    {L"EditPropAfterSnap", L"1", &O::EditPropAfterSnap, chkSnapDialog},
    {L"IconAfterSnap", L"0", &O::IconAfterSnap, chkIconAfterSnap},
    {L"ShowInTray", L"1", &O::ShowInTray, chkTray},
    {L"StartAsIcon", L"0", &O::StartAsIcon, chkIcon},
    {L"ShowTooltips", L"1", &O::ShowTooltips, chkTooltips},
    {L"LockEdit", L"0", &O::LockEdit, chkLock},
    {L"ShowSplash", L"1", &O::ShowSplash, chkSplash},
    {nullptr, L"0", &O::AutoSnap, chkAutoSnap},
    {L"UserInfo", L"", &O::UserInfo, tbInfo},
    // Deliberately two spellings: the store does not tell them apart, and existing ones hold either.
    {L"NewtextMode", L"0", &O::NewtextMode, 0, L"NewTextMode"},
    {L"NewMaxLen", L"20", &O::NewMaxLen, tbTextLen},
    {L"SetClipByDblClick", L"1", &O::SetClipByDblClick, chkDblClick},
    {L"IconAfterSetClip", L"0", &O::IconAfterSetClip, chkIconAfterSet},
    {L"SetBeep", L"0", &O::SetBeep, chkSetBeep},
    {L"MaxClipSize", L"0", &O::MaxClipSize, tbClipLen},
    {L"ActionUnknownSet", L"1", &O::ActionUnknownSet},
    {L"UnknownFormats", L"5", &O::UnknownFormats},
    {L"UnknownSet", L"Clip", &O::UnknownSet, tbUnknownFormatSet},
    {L"KeyActivate", L"L", &O::KeyActivate, tbKeyActivate},
    {L"SkipPrivate", L"1", &O::SkipPrivate, chkSkipPrivate},
    {L"SkipSame", L"0", &O::SkipSame, chkSkipSame},
    {L"NameByContent", L"0", &O::NameByContent, chkNameByContent},
    {nullptr, L"0", &O::StartWithWindows, chkStartWithWindows},
    {L"AutoSnapAtStart", L"0", &O::AutoSnapAtStart, chkAutoSnapAtStart},
    {L"CloseToIcon", L"0", &O::CloseToIcon, chkCloseToIcon},
    {L"HotKeyToList", L"0", &O::HotKeyToList, chkHotKeyToList},
    {L"KeepDeleted", L"0", &O::KeepDeleted, chkKeepDeleted},
    {L"DeletedDays", L"30", &O::DeletedDays, tbDeletedDays},
    {L"MostClips", L"0", &O::MostClips, tbMostClips},
};

std::wstring TextOf(bool value) {
    return value ? L"1" : L"0";
}
std::wstring TextOf(std::int32_t value) {
    return NumberText(value);
}
std::wstring TextOf(const std::wstring& value) {
    return value;
}

template <typename Number>
bool SetNumber(Number& value, const std::optional<Number>& parsed) {
    value = parsed.value_or(value);
    return parsed.has_value();
}

bool Set(bool& value, const std::wstring& text) {
    value = text == L"1";
    return true;
}
bool Set(std::int16_t& value, const std::wstring& text) {
    return SetNumber(value, ParseInt16(text));
}
bool Set(std::int32_t& value, const std::wstring& text) {
    return SetNumber(value, ParseInt32(text));
}
bool Set(std::wstring& value, const std::wstring& text) {
    value = text;
    return true;
}

}  // namespace

std::span<const OptionRow> OptionRows() {
    return kRows;
}

bool IsFlag(const OptionRow& row) {
    return std::holds_alternative<bool OptionValues::*>(row.member);
}

std::wstring OptionText(const OptionRow& row, const OptionValues& values) {
    std::wstring text;
    VisitVariant(row.member, [&](const auto member) { text = TextOf(values.*member); });
    return text;
}

bool SetOption(const OptionRow& row, OptionValues& values, const std::wstring& text) {
    bool set = false;
    VisitVariant(row.member, [&](const auto member) { set = Set(values.*member, text); });
    return set;
}
