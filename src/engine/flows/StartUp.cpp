#include "engine/flows/StartUp.h"

#include "engine/clipboard/modClipboard.h"
#include "engine/clipboard/modFormatDesc.h"
#include "engine/clipboard/modViewerHook.h"
#include "engine/flows/modDragDrop.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/process/modHelp.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "engine/process/modProt.h"
#include "engine/profiles/CProfiles.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

void ClearProcessState() {
    PreviousForeground = WindowHandle::None;
    DiagnosticsOpen = false;
    RequestTrace = false;
}

// The log's place must be known before its first line, so the program's directory comes first of all.
void LocateProgramFiles(const std::wstring& programDirectory) {
    AppPath = AddBackslash(programDirectory);
    FormatSetFile = AppPath + L"NXClip.nxf";
    HelpFile = AppPath + L"Nxclip.hlp";
    HelpPageDirectory = AddBackslash(AppPath + L"Hilfe");
}

void StartLog(const std::wstring& commandLine) {
    DebugMode = commandLine == L"DEBUG";
    if (!DebugMode) return;
    ResetLog();
    WriteLog(L"Main: Programm aktiviert");
}

// The first instance has no window while it starts, asks something about its profiles, or ends.
constexpr std::chrono::milliseconds kPauseBetweenLooks{100};
constexpr int kMostLooks = 80;

// True when this instance has to end because it brought the first one to the front.
bool FirstInstanceTakesOver(StartUpHost& host) {
    if (!host.OtherInstanceRuns()) return false;
    LogDebug(L"Main: Mehr als eine Instance erkannt");
    WindowHandle first = host.FindTopLevelWindow(AppName);
    for (int look = 1; first == WindowHandle::None && look < kMostLooks; ++look) {
        host.Wait(kPauseBetweenLooks);
        if (!host.OtherInstanceRuns()) return false;
        first = host.FindTopLevelWindow(AppName);
    }
    if (first == WindowHandle::None) {
        ThePlatform().user.Tell(std::wstring(L"Window-Handle konnte für \r\n") + AppName +
                                L"\r\nnicht ermittelt werden");
        return false;
    }
    if (host.IsMinimised(first)) host.ShowNormal(first);
    host.ActivateByTitle(AppName);
    return true;
}

void InitTablesAndOptions() {
    InitFormatSets();
    InitFormatDescriptions();
    RegisterOleData();
    RegisterOwnFormat();
    SetDefaultOptions();
    InitSearchOptions();
    LoadOptions();
}

// A missing value counts as 0, and so does one that is no number.
bool ReadFirstStartPending() {
    return ParseInt32(ThePlatform().settings.Read(L"Settings", L"Dialog", L"0")).value_or(0) == 0;
}

}  // namespace

bool StartUp(StartUpHost& host, const std::wstring& commandLine, const std::wstring& programDirectory) {
    ClearProcessState();
    LocateProgramFiles(programDirectory);
    StartLog(commandLine);
    if (FirstInstanceTakesOver(host)) return false;
    InitTablesAndOptions();

    StartedByWindows = commandLine == kStartedByWindows;
    LogDebug(L"Main: Show Splash ...");
    if (Options().ShowSplash && !StartedByWindows) host.ShowSplash();
    LogDebug(L"Main: InitProfiles ...");
    Profiles().Clear();
    LogDebug(L"Main: LoadRegistry ...");
    Profiles().LoadRegistry();
    FirstStartPending = ReadFirstStartPending();
    LogDebug(L"Main: Show frmMain ...");
    host.ShowMainWindow();
    LogDebug(L"Main: End Show frmMain ");
    return true;
}
