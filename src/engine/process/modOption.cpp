#include "engine/process/modOption.h"

#include "engine/process/OptionTable.h"
#include "engine/process/SearchCriteria.h"
#include "engine/process/modMain.h"
#include "engine/process/modProt.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"

namespace {

constexpr const wchar_t* kSection = L"Settings";

void Read(const OptionRow& row) {
    if (row.key == nullptr) return;
    const std::wstring stored = ThePlatform().settings.Read(kSection, row.key, row.whenAbsent);
    if (!SetOption(row, Options(), stored)) throw RuntimeError(ErrorNumber::TypeMismatch);
}

bool Write(const OptionRow& row) {
    if (row.key == nullptr) return true;
    const wchar_t* const key = row.writeKey != nullptr ? row.writeKey : row.key;
    const std::wstring text = OptionText(row, Options());
    SettingsPort& settings = ThePlatform().settings;
    const wchar_t* const absent = L"\x1";  // no option's text
    return settings.Read(kSection, key, absent) == text || settings.Write(kSection, key, text);
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

void SetRecommendedOptions() {
    Options().UnknownFormats = 255;
    Options().NewtextMode = 1;
    Options().EditPropAfterSnap = false;
    Options().SkipSame = true;
    Options().NameByContent = true;
    Options().NewMaxLen = 60;
    Options().StartWithWindows = Options().AutoSnapAtStart = Options().AutoSnap = true;
    Options().CloseToIcon = Options().HotKeyToList = Options().IconAfterSetClip = true;
    Options().KeepDeleted = true;
    ApplyStartWithWindows();
}

void ApplyStartWithWindows() {
    SettingsPort& settings = ThePlatform().settings;
    const std::wstring command = Options().StartWithWindows
                                     ? L"\"" + WithBackslash(AppPath) + L"NXClip.exe\" " + kStartedByWindows
                                     : L"";
    if (settings.LogonCommand() == command || settings.SetLogonCommand(command)) return;
    ThePlatform().user.Tell(L"Der Start mit Windows konnte nicht geändert werden.");
}

void LoadOptions() {
    LogDebug(L"LoadOptions ...");
    const auto error = ErrorIn([] {
        for (const OptionRow& row : OptionRows())
            Read(row);
        if (Options().KeyActivate.size() != 1) Options().KeyActivate = L"L";
        Options().StartWithWindows = !ThePlatform().settings.LogonCommand().empty();
        LogDebug(L"LoadOptions beendet");
    });
    if (error) TellLoadError(error->Description());
}

bool SaveOptions() {
    bool allWritten = true;
    for (const OptionRow& row : OptionRows()) {
        if (!Write(row)) allWritten = false;
    }
    return allWritten;
}

bool TellsForTheFirstTime(const std::wstring& key) {
    SettingsPort& settings = ThePlatform().settings;
    return settings.Read(kSection, key, L"0") != L"1" && settings.Write(kSection, key, L"1");
}

void InitSearchOptions() {
    TheSearchCriteria() = SearchCriteria();
}
