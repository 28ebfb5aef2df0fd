#include "engine/clipboard/modViewerHook.h"

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
ViewerChain TheChain;

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

std::uint32_t ChangeNumber() {
    return ThePlatform().clipboard.SequenceNumber();
}

// The numbers begin again when the highest is reached.
bool IsLater(std::uint32_t number, std::uint32_t than) {
    return static_cast<std::int32_t>(number - than) > 0;
}

}  // namespace

// A message on its way along the chain. Those that are under way stand on the stack, the newest first.
class PassingMessage {
 public:
    explicit PassingMessage(const ChainMessage& message) : message_(message), outer_(TheChain.passing) {
        TheChain.passing = this;
    }
    ~PassingMessage() { TheChain.passing = outer_; }
    PassingMessage(const PassingMessage&) = delete;
    PassingMessage& operator=(const PassingMessage&) = delete;

    // The same message is under way already.
    bool IsAgain() const {
        for (const PassingMessage* other = outer_; other != nullptr; other = other->outer_)
            if (other->message_ == message_) return true;
        return false;
    }

 private:
    ChainMessage message_;
    const PassingMessage* outer_;
};

namespace {

// Viewers that post what they pass on make a ring of which the stack knows nothing; one that is not waited
// for does so as well. More copies than these are not told of at once, and a viewer behind us leaves once.
constexpr int kMostRepeats = 50;

// How often the same message came before, one after the other.
int TimesBefore(const ChainMessage& message) {
    auto& [newest, times] = message.change != 0 ? TheChain.newestChange : TheChain.newestLeaving;
    if (std::exchange(newest, message) != message) times = 0;
    return times++;
}

// What comes again while it is passed on has gone round. When we have joined anew, a viewer that did not hear
// of our leaving still takes us for its successor: its message, perhaps a late one, means the place that we
// had, and gets served there, once.
WindowHandle SuccessorFor(const ChainMessage& message, bool isAgain) {
    const int times = TimesBefore(message);
    const int mostRepeats = message.change != 0 ? kMostRepeats : 0;
    if (TheChain.formerNext == WindowHandle::None)
        return isAgain || times > mostRepeats ? WindowHandle::None : NextViewer;
    return times == 0 ? NextViewer : times == 1 ? TheChain.formerNext : WindowHandle::None;
}

ChainMessage ChangeMessage(std::uint32_t change) {
    return {static_cast<std::uint32_t>(Message::DrawClipboard), 0, 0, change};
}

MessageParameter PassOn(const Parameters& p, const ChainMessage& message) {
    const PassingMessage passing(message);
    const WindowHandle next = SuccessorFor(message, passing.IsAgain());
    if (next == WindowHandle::None || next == p.window) return 0;
    return ThePlatform().windows.Deliver(next, p.message, p.w, p.l);
}

// What this program puts on the clipboard itself is never captured.
bool IsToBeCaptured(WindowHandle mainWindow) {
    return Options().AutoSnap && ThePlatform().clipboard.Owner() != mainWindow;
}

void TakeChange(WindowHandle mainWindow) {
    if (!IsToBeCaptured(mainWindow)) return;
    NotePreviousForeground(mainWindow);
    if (TheMainWindowHooks.updateClipBoard) TheMainWindowHooks.updateClipBoard();
}

MessageParameter ClipboardChanged(const Parameters& p) {
    const std::uint32_t change = ChangeNumber();
    // What stood there when we joined is no change; the system tells of it all the same.
    if (change != TheChain.joinedAt) {
        // Late, it is of the change that the listener has told of and that was taken then. The number may
        // have moved on since, because others read what nobody had read before: that is no new change, and of
        // one the listener tells.
        const bool late = std::exchange(TheChain.owes, false);
        TheChain.brought = late ? TheChain.updatedTo : change;
        if (!late) TakeChange(p.window);
    }
    return PassOn(p, ChangeMessage(ChangeNumber()));
}

// While it joins nothing is passed on: the successor is not known yet, and knows the content that is there.
void JoinChain(WindowHandle window) {
    NextViewer = WindowHandle::None;
    TheChain.owes = false;
    TheChain.joinedAt = ChangeNumber();
    NextViewer = ThePlatform().clipboard.JoinChain(window);
    TheChain.newestChange = {ChangeMessage(TheChain.joinedAt), 1};
    TheChain.newestLeaving = {};
}

// The system itself would wait without end for the first viewer to take note; it has nobody to tell when that
// is the one that leaves.
void LeaveChain(WindowHandle window) {
    const WindowHandle first = ThePlatform().clipboard.FirstViewer();
    if (first == window) {
        ThePlatform().clipboard.LeaveChain(window, NextViewer);
    } else if (first != WindowHandle::None) {
        ThePlatform().windows.Deliver(first, static_cast<std::uint32_t>(Message::ChangeChain),
                                      static_cast<MessageParameter>(window),
                                      static_cast<MessageParameter>(NextViewer));
    }
}

// The first viewer has nobody in front who could fail it. In front of a viewer that hangs each message would
// have to wait for it: where we are now only this one knows, and the listener tells of the changes. False
// when it is to be tried again.
bool JoinAnew(WindowHandle window) {
    const WindowHandle first = ThePlatform().clipboard.FirstViewer();
    if (first == window) return true;
    if (first != WindowHandle::None && !ThePlatform().windows.Answers(first)) return false;
    LogDebug(L"Clipboard viewer chain joined anew");
    LeaveChain(window);
    const WindowHandle former = NextViewer;
    JoinChain(window);
    TheChain.formerNext = former;
    return true;
}

void WaitForChain();

// What the chain has not brought after the delay, it does not bring. A change that was told of later has its
// own time.
void JudgeChain() {
    if (IsLater(TheChain.awaited, TheChain.brought)) {
        if (!JoinAnew(OwnViewer)) TheChain.rejoining->PutOff(2 * kChainsDelay);
    } else if (TheChain.owes) {
        WaitForChain();
    }
}

void WaitForChain() {
    if (TheMainWindowHooks.scheduler == nullptr || (TheChain.rejoining && TheChain.rejoining->IsDue()))
        return;
    TheChain.awaited = TheChain.updatedTo;
    TheChain.rejoining = std::make_unique<Once>(*TheMainWindowHooks.scheduler, JudgeChain);
    TheChain.rejoining->PutOff(kChainsDelay);
}

// The chain's message of the same change comes before this one or after it. The number of a change moves on
// when another program has its data rendered, so a message that came since the last update was of this one.
MessageParameter ListenerTold(const Parameters& p) {
    if (OwnViewer != p.window) return 0;
    const std::uint32_t change = ChangeNumber();
    const std::uint32_t before = std::exchange(TheChain.updatedTo, change);
    if (TheMainWindowHooks.copyTold && IsToBeCaptured(p.window)) TheMainWindowHooks.copyTold();
    TheChain.owes = TheChain.brought != change && !IsLater(TheChain.brought, before);
    if (!TheChain.owes) return 0;
    TakeChange(p.window);
    WaitForChain();
    return 0;
}

// We may stand in the chain twice for a moment; both places are looked at.
MessageParameter ChainChanged(const Parameters& p) {
    const WindowHandle leaving = WindowOf(p.w), behindIt = WindowOf(p.l);
    if (leaving == TheChain.formerNext) TheChain.formerNext = behindIt;
    if (leaving != NextViewer) return PassOn(p, {p.message, p.w, p.l});
    NextViewer = behindIt;
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
    OwnViewer = window;
    JoinChain(window);
    TheChain.brought = TheChain.updatedTo = TheChain.joinedAt;
    ThePlatform().clipboard.Listen(window);
    return NextViewer;
}

void DisconnectViewer() {
    TheChain.rejoining.reset();
    if (OwnViewer != WindowHandle::None) {
        ThePlatform().clipboard.StopListening(OwnViewer);
        LeaveChain(OwnViewer);
    }
    OwnViewer = WindowHandle::None;
    NextViewer = WindowHandle::None;
    TheChain.formerNext = WindowHandle::None;
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
