#include "engine/process/modOption.h"

#include <optional>
#include <variant>

#include "engine/process/SearchCriteria.h"
#include "engine/process/modMain.h"
#include "engine/process/modProt.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/VisitVariant.h"

namespace {

constexpr const wchar_t* kSection = L"Settings";

// Where an option lives, and what its key counts as when the store does not have it. What it is reset to
// stands with the values themselves.
template <typename Value, typename Default = Value>
struct Slot {
    Value OptionValues::*field;
    Default whenAbsent;
};

using Flag = Slot<bool>;
using Integer = Slot<std::int16_t>;
using Long = Slot<std::int32_t>;
using Text = Slot<std::wstring, const wchar_t*>;

struct Option {
    const wchar_t* readKey;
    const wchar_t* writeKey;
    std::variant<Flag, Integer, Long, Text> slot;
};

template <typename AnySlot>
constexpr Option Row(const wchar_t* key, AnySlot slot) {
    return {key, key, slot};
}

// In the order in which the store is read and written.
using O = OptionValues;
constexpr Option kOptions[] = {
    Row(L"TopWindow", Flag{&O::TopWindow, false}),
    Row(L"SnapSound", Flag{&O::SnapSound, false}),
    Row(L"SoundFile", Text{&O::SoundFile, L""}),
    Row(L"EditPropAfterSnap", Flag{&O::EditPropAfterSnap, true}),
    Row(L"IconAfterSnap", Flag{&O::IconAfterSnap, false}),
    Row(L"ShowInTray", Flag{&O::ShowInTray, true}),
    Row(L"StartAsIcon", Flag{&O::StartAsIcon, false}),
    Row(L"ShowTooltips", Flag{&O::ShowTooltips, true}),
    Row(L"LockEdit", Flag{&O::LockEdit, false}),
    Row(L"ShowSplash", Flag{&O::ShowSplash, true}),
    Row(L"UserInfo", Text{&O::UserInfo, L""}),
    // Deliberately two spellings: the store does not tell them apart, and existing ones hold either.
    {L"NewtextMode", L"NewTextMode", Integer{&O::NewtextMode, 0}},
    Row(L"NewMaxLen", Integer{&O::NewMaxLen, 20}),
    Row(L"SetClipByDblClick", Flag{&O::SetClipByDblClick, true}),
    Row(L"IconAfterSetClip", Flag{&O::IconAfterSetClip, false}),
    Row(L"SetBeep", Flag{&O::SetBeep, false}),
    Row(L"MaxClipSize", Long{&O::MaxClipSize, 0}),
    Row(L"ActionUnknownSet", Integer{&O::ActionUnknownSet, 1}),
    Row(L"UnknownFormats", Integer{&O::UnknownFormats, 5}),
    Row(L"UnknownSet", Text{&O::UnknownSet, L"Clip"}),
    Row(L"KeyActivate", Text{&O::KeyActivate, L"L"}),
};

std::wstring StoredText(bool value) {
    return value ? L"1" : L"0";
}
std::wstring StoredText(std::int32_t value) {
    return NumberText(value);
}
std::wstring StoredText(const std::wstring& value) {
    return value;
}
// Without this one a default text would count as a flag.
std::wstring StoredText(const wchar_t* value) {
    return value;
}

template <typename Number>
Number Converted(const std::optional<Number>& number) {
    if (!number) throw RuntimeError(ErrorNumber::TypeMismatch);
    return *number;
}

void Convert(const std::wstring& text, bool& value) {
    value = text == L"1";
}
void Convert(const std::wstring& text, std::int16_t& value) {
    value = Converted(ParseInt16(text));
}
void Convert(const std::wstring& text, std::int32_t& value) {
    value = Converted(ParseInt32(text));
}
void Convert(const std::wstring& text, std::wstring& value) {
    value = text;
}

void Read(const Option& option, OptionValues& values) {
    VisitVariant(option.slot, [&](const auto& slot) {
        const std::wstring absent = StoredText(slot.whenAbsent);
        Convert(ThePlatform().settings.Read(kSection, option.readKey, absent), values.*slot.field);
    });
}

bool Write(const Option& option, const OptionValues& values) {
    bool written = false;
    VisitVariant(option.slot, [&](const auto& slot) {
        written = ThePlatform().settings.Write(kSection, option.writeKey, StoredText(values.*slot.field));
    });
    return written;
}

void TellLoadError(const std::wstring& description) {
    if (!DebugMode) return;
    ThePlatform().user.Tell(
        L"Fehlerhafter Eintrag in der Registry.\r\n"
        L"Standardeinstellungen wurden gesetzt und werden beim schliessen des Programmes\r\n"
        L"gesichert.",
        AppName);
    WriteLog(L"LoadOptions: " + description + L"\r\n" + AppName);
}

}  // namespace

OptionValues& Options() {
    static OptionValues values;
    return values;
}

void SetDefaultOptions() {
    Options() = OptionValues();
}

void LoadOptions() {
    LogDebug(L"LoadOptions ...");
    const auto error = ErrorIn([] {
        for (const Option& option : kOptions)
            Read(option, Options());
        if (Options().KeyActivate.size() != 1) Options().KeyActivate = L"L";
        LogDebug(L"LoadOptions beendet");
    });
    if (error) TellLoadError(error->Description());
}

bool SaveOptions() {
    bool allWritten = true;
    for (const Option& option : kOptions) {
        if (!Write(option, Options())) allWritten = false;
    }
    return allWritten;
}

void InitSearchOptions() {
    TheSearchCriteria() = SearchCriteria();
}
