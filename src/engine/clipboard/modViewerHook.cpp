#include "engine/clipboard/modViewerHook.h"

#include <optional>
#include <utility>

#include "engine/clipboard/modClipboard.h"
#include "engine/process/modOption.h"
#include "engine/process/modProt.h"
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
    ClipboardUpdate = 0x031D,
};

// A viewer in front of us may be slow with its message.
constexpr std::chrono::seconds kChainsDelay(2);

// The messages that came along the chain.
std::uint32_t chainMessages = 0;
// Of them, those that had come at the last change that the listener was told of.
std::uint32_t chainMessagesBefore = 0;
// The chain is to be joined anew, unless messages have come along it until then.
std::optional<Once> rejoining;
std::uint32_t chainMessagesAtSuspicion = 0;
// The change that is being passed on.
std::optional<std::uint32_t> passing;

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

// A viewer that did not hear of our leaving makes a ring of the chain when we join it anew: the same change
// comes back while we pass it on.
MessageParameter PassChangeOn(const Parameters& p) {
    const std::uint32_t change = ThePlatform().clipboard.SequenceNumber();
    if (change != 0 && passing == change) return 0;
    const auto before = std::exchange(passing, change);
    const MessageParameter result = PassOn(p);
    passing = before;
    return result;
}

void TakeChange(WindowHandle mainWindow) {
    // What this program puts on the clipboard itself is never captured.
    if (!Options().AutoSnap || ThePlatform().clipboard.Owner() == mainWindow) return;
    NotePreviousForeground(mainWindow);
    if (TheMainWindowHooks.updateClipBoard) TheMainWindowHooks.updateClipBoard();
}

MessageParameter ClipboardChanged(const Parameters& p) {
    ++chainMessages;
    TakeChange(p.window);
    return PassChangeOn(p);
}

void JoinAnew(WindowHandle window) {
    LogDebug(L"Clipboard viewer chain joined anew");
    ThePlatform().clipboard.LeaveChain(window, NextViewer);
    NextViewer = ThePlatform().clipboard.JoinChain(window);
}

// Of a whole chain the message has come already, or comes soon.
MessageParameter ListenerTold(const Parameters& p) {
    if (std::exchange(chainMessagesBefore, chainMessages) != chainMessages || OwnViewer != p.window) return 0;
    TakeChange(p.window);
    if (TheMainWindowHooks.scheduler == nullptr || (rejoining && rejoining->IsDue())) return 0;
    chainMessagesAtSuspicion = chainMessages;
    rejoining.emplace(*TheMainWindowHooks.scheduler, [window = p.window] {
        if (chainMessages == chainMessagesAtSuspicion && OwnViewer == window) JoinAnew(window);
    });
    rejoining->PutOff(kChainsDelay);
    return 0;
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
    ThePlatform().clipboard.Listen(window);
    return NextViewer;
}

void DisconnectViewer() {
    rejoining.reset();
    if (OwnViewer != WindowHandle::None) {
        ThePlatform().clipboard.StopListening(OwnViewer);
        ThePlatform().clipboard.LeaveChain(OwnViewer, NextViewer);
    }
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
        case Message::ClipboardUpdate:
            return ListenerTold(p);
    }
    if (OriginalWndProc == ProcedureAddress::None) return 0;
    return ThePlatform().windows.CallProcedure(OriginalWndProc, window, message, wParam, lParam);
}
