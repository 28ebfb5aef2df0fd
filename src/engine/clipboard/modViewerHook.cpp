#include "engine/clipboard/modViewerHook.h"

#include <utility>

#include "engine/clipboard/modClipboard.h"
#include "engine/process/modOption.h"
#include "platform/Platform.h"

ProcedureAddress OriginalWndProc = ProcedureAddress::None;
WindowHandle HookedWindow = WindowHandle::None;
WindowHandle OwnViewer = WindowHandle::None;
WindowHandle NextViewer = WindowHandle::None;
WindowHandle PreviousForeground = WindowHandle::None;
MainWindowHooks TheMainWindowHooks;

namespace {

enum class Message : std::uint32_t {
    RenderFormat = 0x0305,
    RenderAllFormats = 0x0306,
    DrawClipboard = 0x0308,
    ChangeChain = 0x030D,
    HotKey = 0x0312,
};

struct Parameters {
    WindowHandle window;
    std::uint32_t message;
    MessageParameter w;
    MessageParameter l;
};

WindowHandle WindowOf(MessageParameter parameter) {
    return static_cast<WindowHandle>(parameter);
}

void NotePreviousForeground(WindowHandle mainWindow) {
    // The main window itself is nothing to give the focus back to.
    const WindowHandle front = ThePlatform().windows.Foreground();
    if (front != mainWindow) PreviousForeground = front;
}

MessageParameter PassOn(const Parameters& p) {
    // A chain that names us as our own successor would go round for ever.
    if (NextViewer == WindowHandle::None || NextViewer == p.window) return 0;
    return ThePlatform().windows.Deliver(NextViewer, p.message, p.w, p.l);
}

MessageParameter ClipboardChanged(const Parameters& p) {
    // What this program puts on the clipboard itself is never captured.
    if (Options().AutoSnap && ThePlatform().clipboard.Owner() != p.window) {
        NotePreviousForeground(p.window);
        if (TheMainWindowHooks.updateClipBoard) TheMainWindowHooks.updateClipBoard();
    }
    return PassOn(p);
}

MessageParameter ChainChanged(const Parameters& p) {
    if (WindowOf(p.w) != NextViewer) return PassOn(p);
    NextViewer = WindowOf(p.l);
    return 0;
}

MessageParameter HotKeyPressed(const Parameters& p) {
    NotePreviousForeground(p.window);
    if (TheMainWindowHooks.hotKeyAction) TheMainWindowHooks.hotKeyAction(p.window);
    return 0;
}

}  // namespace

void SubclassWindow(WindowHandle window) {
    UnsubclassWindow();
    OriginalWndProc = ThePlatform().windows.ExchangeProcedure(window, TheMainWindowHooks.procedure);
    if (OriginalWndProc != ProcedureAddress::None) HookedWindow = window;
}

void UnsubclassWindow() {
    const WindowHandle window = std::exchange(HookedWindow, WindowHandle::None);
    const ProcedureAddress original = std::exchange(OriginalWndProc, ProcedureAddress::None);
    if (original != ProcedureAddress::None) ThePlatform().windows.ExchangeProcedure(window, original);
}

WindowHandle ConnectViewer(WindowHandle window) {
    SubclassWindow(window);
    DisconnectViewer();
    ClipboardWindow = window;
    NextViewer = ThePlatform().clipboard.JoinChain(window);
    OwnViewer = window;
    return NextViewer;
}

void DisconnectViewer() {
    if (OwnViewer != WindowHandle::None) ThePlatform().clipboard.LeaveChain(OwnViewer, NextViewer);
    OwnViewer = WindowHandle::None;
    NextViewer = WindowHandle::None;
}

void RestoreForeground() {
    const WindowHandle window = std::exchange(PreviousForeground, WindowHandle::None);
    if (window != WindowHandle::None) ThePlatform().windows.BringToFront(window);
}

MessageParameter ClipboardWndProc(WindowHandle window, std::uint32_t message, MessageParameter wParam,
                                  MessageParameter lParam) {
    const Parameters p{window, message, wParam, lParam};
    switch (static_cast<Message>(message)) {
        case Message::RenderFormat:
            RenderPendingFormat(static_cast<FormatNumber>(wParam));
            return 0;
        case Message::RenderAllFormats:
            RenderAllFormats();
            return 0;
        case Message::DrawClipboard:
            return ClipboardChanged(p);
        case Message::ChangeChain:
            return ChainChanged(p);
        case Message::HotKey:
            return HotKeyPressed(p);
    }
    if (OriginalWndProc == ProcedureAddress::None) return 0;
    return ThePlatform().windows.CallProcedure(OriginalWndProc, window, message, wParam, lParam);
}
