#pragma once

#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/modClipboard.h"
#include "engine/clipboard/modFormatDesc.h"
#include "engine/clipboard/modViewerHook.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/process/modHelp.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "engine/profiles/CProfiles.h"
#include "platform/FlushLater.h"

// Every process-wide value is as at the start of a run when the scope begins, and again when it ends: what
// one test sets does not reach the next one. The fake machine must live longer, since what was announced on
// its clipboard is freed.
class ProcessStateScope {
 public:
    ProcessStateScope() { Reset(); }
    ~ProcessStateScope() { Reset(); }
    ProcessStateScope(const ProcessStateScope&) = delete;
    ProcessStateScope& operator=(const ProcessStateScope&) = delete;

 private:
    static void Reset() {
        ClearPendingRenderSet();
        TheMainWindowHooks = {};
        TheChain = {};
        OriginalWndProc = ProcedureAddress::None;
        HookedWindow = OwnViewer = NextViewer = PreviousForeground = ClipboardWindow = WindowHandle::None;
        OwnMarkerFormat = 0;
        RequestTraceSink = nullptr;
        DebugMode = FirstStartPending = DiagnosticsOpen = RequestTrace = false;
        AppPath = FormatSetFile = HelpFile = HelpPageDirectory = L"";
        SetDefaultOptions();
        InitSearchOptions();
        InitFormatSets();
        InitFormatDescriptions();
        Profiles().Clear();
        while (FlushNext()) {
        }
    }
};
