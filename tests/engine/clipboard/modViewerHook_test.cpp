#include "engine/clipboard/modViewerHook.h"

#include "engine/clipboard/ClipboardTest.h"

namespace {

using namespace std::string_literals;

constexpr std::uint32_t kDrawClipboard = 0x0308, kChangeChain = 0x030D, kHotKey = 0x0312,
                        kClipboardUpdate = 0x031D;

MessageParameter Parameter(WindowHandle window) {
    return static_cast<MessageParameter>(window);
}

class ViewerHookTest : public ClipboardTest, private Scheduler {
 protected:
    ViewerHookTest() {
        next = fake.windows.AddWindow(L"Next", [this](auto, std::uint32_t message, auto w, auto l) {
            forwarded.push_back({message, w, l});
            return MessageParameter{55};
        });
        TheMainWindowHooks.updateClipBoard = [this] { ++updates; };
        TheMainWindowHooks.hotKeyAction = [this](WindowHandle window) { hotKeyWindow = window; };
        TheMainWindowHooks.scheduler = this;
        Options().AutoSnap = true;
    }
    void Later(std::chrono::milliseconds, std::function<void()> action) override {
        if (std::exchange(laterFails, false)) throw std::bad_alloc();
        later.push_back(std::move(action));
    }
    MessageParameter Send(std::uint32_t message, MessageParameter w = 0, MessageParameter l = 0) {
        return fake.windows.Deliver(mainWindow, message, w, l);
    }
    void StoreAndRestoreText() {
        fake.files.SetBytes(kClip, RecordBytes(1, "Text", "abc\0"s));
        ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 1));
    }

    void Copy() { fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(1, "x")}); }
    void RunLater() {
        for (const auto& action : std::exchange(later, {})) {
            const WindowHandle first = fake.clipboard.FirstViewer();
            action();
            if (fake.clipboard.FirstViewer() != first) ++joins;
        }
    }

    using Forwarded = std::tuple<std::uint32_t, MessageParameter, MessageParameter>;
    WindowHandle next;
    WindowHandle hotKeyWindow = WindowHandle::None;
    int updates = 0;
    int rounds = 0;
    int joins = 0;
    std::vector<Forwarded> forwarded;
    std::vector<std::function<void()>> later;
    bool laterFails = false;  // the next one does
};

}  // namespace

TEST_F(ViewerHookTest, ConnectViewer_HooksTheWindowAndUndoesBothWhenCalledAgain) {
    const ProcedureAddress own = fake.windows.ProcedureOf(mainWindow);
    const ProcedureAddress original = OriginalWndProc;
    EXPECT_EQ(own, TheMainWindowHooks.procedure);
    EXPECT_EQ(HookedWindow, mainWindow);
    EXPECT_EQ(fake.clipboard.FirstViewer(), mainWindow);

    fake.clipboard.LeaveChain(mainWindow, WindowHandle::None);
    fake.clipboard.JoinChain(next);
    OwnViewer = WindowHandle::None;
    EXPECT_EQ(ConnectViewer(mainWindow), next);
    EXPECT_EQ(OriginalWndProc, original);
    EXPECT_EQ(fake.windows.ProcedureOf(mainWindow), own);

    EXPECT_EQ(ConnectViewer(mainWindow), next);
    EXPECT_EQ(fake.clipboard.FirstViewer(), mainWindow);

    DisconnectViewer();
    UnsubclassWindow();
    EXPECT_EQ(fake.windows.ProcedureOf(mainWindow), original);
    EXPECT_EQ(fake.clipboard.FirstViewer(), next);
    EXPECT_EQ(OriginalWndProc, ProcedureAddress::None);
    EXPECT_EQ(OwnViewer, WindowHandle::None);
}

TEST_F(ViewerHookTest, ClipboardWndProc_CapturesChangesOfOtherProgramsOnly) {
    fake.windows.foreground = next;
    fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(1, "x")});
    EXPECT_EQ(updates, 1);
    EXPECT_EQ(PreviousForeground, next);

    StoreAndRestoreText();
    EXPECT_EQ(updates, 1);

    Options().AutoSnap = false;
    fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(1, "x")});
    EXPECT_EQ(updates, 1);
}

TEST_F(ViewerHookTest, ClipboardWndProc_PassesEveryChangeOnToTheNextViewer) {
    NextViewer = next;
    for (const bool automatic : {true, false}) {
        Options().AutoSnap = automatic;
        forwarded.clear();
        EXPECT_EQ(Send(kDrawClipboard, 11, 12), 55);
        EXPECT_EQ(forwarded, (std::vector<Forwarded>{{kDrawClipboard, 11, 12}}));
    }
    NextViewer = WindowHandle::None;
    EXPECT_EQ(Send(kDrawClipboard), 0);
    // A chain that leads back to us must not go round for ever.
    NextViewer = mainWindow;
    EXPECT_EQ(Send(kDrawClipboard), 0);
    EXPECT_EQ(Send(kChangeChain, Parameter(next)), 0);
    EXPECT_TRUE(passedToOriginal.empty());
}

TEST_F(ViewerHookTest, ClipboardWndProc_TakesTheSuccessorOfALeavingViewer) {
    NextViewer = next;
    const WindowHandle other = fake.windows.AddWindow(L"Other");
    EXPECT_EQ(Send(kChangeChain, Parameter(other), 0), 55);
    EXPECT_EQ(NextViewer, next);
    EXPECT_EQ(forwarded.size(), 1u);

    EXPECT_EQ(Send(kChangeChain, Parameter(next), Parameter(other)), 0);
    EXPECT_EQ(NextViewer, other);
    EXPECT_EQ(forwarded.size(), 1u);
    EXPECT_TRUE(passedToOriginal.empty());
}

TEST_F(ViewerHookTest, ClipboardWndProc_NotesWhoWasInFrontWhenTheHotKeyWasPressed) {
    fake.windows.foreground = next;
    EXPECT_EQ(Send(kHotKey), 0);
    EXPECT_EQ(hotKeyWindow, mainWindow);
    EXPECT_EQ(PreviousForeground, next);
    // The main window itself would be no help: the focus is to go back to somebody else.
    fake.windows.foreground = mainWindow;
    Send(kHotKey);
    EXPECT_EQ(PreviousForeground, next);

    RestoreForeground();
    EXPECT_EQ(fake.windows.foreground, next);
    EXPECT_EQ(PreviousForeground, WindowHandle::None);
    fake.windows.foreground = mainWindow;
    RestoreForeground();
    EXPECT_EQ(fake.windows.foreground, mainWindow);
}

TEST_F(ViewerHookTest, ClipboardWndProc_AnswersRequestsFromThePendingClip) {
    StoreAndRestoreText();
    EXPECT_EQ(Send(0x0305, 13), 0);
    EXPECT_FALSE(fake.clipboard.Holds(13));
    EXPECT_EQ(fake.clipboard.OtherProgramReads(1), "abc\0"s);

    StoreAndRestoreText();
    ClearPendingRenderSet();
    EXPECT_EQ(fake.clipboard.OtherProgramReads(1), std::nullopt);
    EXPECT_TRUE(passedToOriginal.empty());
}

// Another program waits inside its call: nobody is to answer a box.
TEST_F(ViewerHookTest, ClipboardWndProc_SaysInTheStatusBarWhyARequestFails) {
    fake.files.SetBytes(kClip, RecordBytes(3, "Metafile", std::string(16, '\0') + "no metafile"));
    ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 1));
    EXPECT_EQ(fake.clipboard.OtherProgramReads(3), std::nullopt);
    EXPECT_EQ(fake.user.LastStatus(), L"SetToClipboard: SetMetaFileBitsEx2 fehlgeschlagen");
    fake.FailNth(Operation::FilesOpen, 1);
    EXPECT_EQ(fake.clipboard.OtherProgramReads(3), std::nullopt);
    EXPECT_TRUE(fake.user.LastStatus().starts_with(L"CreateFile fehlgeschlagen mit Fehlercode: "));
    EXPECT_TRUE(fake.user.messages.empty());
}

// Any program in the chain can break it, and nobody is told.
TEST_F(ViewerHookTest, BrokenChain_LosesNoCopyInEitherOrderAndIsJoinedAnew) {
    for (const bool listenersFirst : {false, true}) {
        SCOPED_TRACE(listenersFirst);
        fake.clipboard.listenersFirst = listenersFirst;
        updates = joins = 0;
        for (int copies = 1; copies <= 4; ++copies)
            Copy();
        EXPECT_EQ(updates, 4);
        RunLater();
        EXPECT_EQ(joins, 0) << "the chain was whole";

        fake.clipboard.BreakChain();
        fake.clipboard.JoinChain(next);
        laterFails = true;
        updates = 0;
        EXPECT_THROW(Copy(), std::bad_alloc);
        EXPECT_EQ(updates, 1) << "the very first one";
        Copy();
        Copy();
        EXPECT_EQ(updates, 3);
        ASSERT_EQ(later.size(), 1u);
        // In front of a viewer that hangs nothing is gained.
        fake.windows.hung = next;
        RunLater();
        EXPECT_EQ(fake.clipboard.FirstViewer(), next);
        fake.windows.hung = WindowHandle::None;
        RunLater();
        EXPECT_EQ(fake.clipboard.FirstViewer(), mainWindow);
        EXPECT_EQ(updates, 3) << "what stood there already was taken once";
        ASSERT_FALSE(forwarded.empty());
        EXPECT_EQ(forwarded.back(), (Forwarded{kChangeChain, Parameter(mainWindow), 0}));
        ConnectViewer(mainWindow);
        NextViewer = WindowHandle::None;
        forwarded.clear();
    }
    DisconnectViewer();
    updates = 0;
    Copy();
    EXPECT_EQ(updates, 0);
}

TEST_F(ViewerHookTest, BrokenChain_IsNoticedWhileTheMessageOfAnEarlierChangeWasLate) {
    fake.clipboard.listenersFirst = true;
    Copy();
    fake.clipboard.BreakChain();
    fake.clipboard.JoinChain(next);
    Copy();
    RunLater();
    EXPECT_EQ(joins, 0) << "its message may be late, too";
    RunLater();
    EXPECT_EQ(joins, 1);
    Copy();
    RunLater();
    EXPECT_TRUE(later.empty());
}

// Data rendered for somebody else moves the clipboard's number on.
TEST_F(ViewerHookTest, WholeChain_IsNotSuspectedBecauseAViewerBehindAskedForData) {
    NextViewer = fake.windows.AddWindow(L"Reader", [this](auto, auto, auto, auto) {
        fake.clipboard.OtherProgramReads(1);
        return MessageParameter{0};
    });
    for (int copies = 1; copies <= 3; ++copies)
        fake.clipboard.OtherProgramCopies({FakeClipboard::Late(FakeClipboard::Bytes(1, "x"))});
    EXPECT_EQ(updates, 3);
    EXPECT_TRUE(later.empty());
}

// The message that comes after the listener's, with a number that our own reading moved on, is of that
// change.
TEST_F(ViewerHookTest, ChainsLateMessage_DoesNotSpeakForTheNextChange) {
    fake.clipboard.listenersFirst = true;
    TheMainWindowHooks.updateClipBoard = [this] {
        ++updates;
        fake.clipboard.OtherProgramReads(1);
    };
    const auto copyLate = [this] {
        fake.clipboard.OtherProgramCopies({FakeClipboard::Late(FakeClipboard::Bytes(1, "x"))});
    };
    copyLate();
    fake.clipboard.BreakChain();
    fake.clipboard.JoinChain(next);
    updates = 0;
    copyLate();
    EXPECT_EQ(updates, 1);
    RunLater();
    EXPECT_EQ(joins, 0) << "the change that was waited for did come";
    RunLater();
    EXPECT_EQ(joins, 1);
    DisconnectViewer();
}

// A viewer in front keeps the message for a while and reads meanwhile what we had no use for.
TEST_F(ViewerHookTest, ChainsLateMessage_TakesNothingTwiceAndHidesNoNewerChange) {
    const auto copyUntold = [this] {
        fake.clipboard.BreakChain();
        fake.clipboard.StopListening(mainWindow);
        fake.clipboard.OtherProgramCopies({FakeClipboard::Late(FakeClipboard::Bytes(1, "x"))});
    };
    for (const bool copiedAgain : {false, true}) {
        SCOPED_TRACE(copiedAgain);
        updates = 0;
        copyUntold();
        Send(kClipboardUpdate);
        EXPECT_EQ(updates, 1);
        if (copiedAgain) copyUntold();
        fake.clipboard.OtherProgramReads(1);
        Send(kDrawClipboard);
        EXPECT_EQ(updates, 1);
        if (copiedAgain) Send(kClipboardUpdate);
        EXPECT_EQ(updates, copiedAgain ? 2 : 1);
    }
}

TEST_F(ViewerHookTest, DisconnectViewer_WaitsForNobodyInFront) {
    fake.clipboard.JoinChain(next);
    fake.windows.hung = next;
    DisconnectViewer();
    fake.windows.hung = WindowHandle::None;
    ConnectViewer(mainWindow);
    DisconnectViewer();
    EXPECT_EQ(fake.clipboard.FirstViewer(), next);
}

// A viewer that does not hear of our leaving, or passes everything on without a look, leads back to us.
TEST_F(ViewerHookTest, Ring_IsLeftAfterOneRoundAndServesThePlaceThatWeHad) {
    const WindowHandle back = fake.windows.AddWindow(L"Back", [this](auto, auto message, auto w, auto l) {
        ++rounds;
        return rounds % 10 != 0 ? Send(message, w, l) : MessageParameter{0};
    });
    NextViewer = back;
    WindowHandle leaving = WindowHandle::None;
    for (const WindowHandle former : {WindowHandle::None, next}) {
        leaving = fake.windows.AddWindow(L"Leaving");
        TheChain.formerNext = former;
        const std::size_t served = former == next ? 1 : 0;
        rounds = 0;
        forwarded.clear();
        Copy();
        EXPECT_EQ(rounds, 1);
        EXPECT_EQ(forwarded.size(), served);
        Send(kChangeChain, Parameter(leaving), 0);
        EXPECT_EQ(rounds, 2);
        EXPECT_EQ(forwarded.size(), 2 * served);
    }
    Send(kChangeChain, Parameter(next), Parameter(leaving));
    EXPECT_EQ(TheChain.formerNext, leaving);

    // It may also post, so that each round begins anew.
    TheChain.formerNext = WindowHandle::None;
    NextViewer = next;
    forwarded.clear();
    Copy();
    for (int i = 0; i < 1000; ++i)
        Send(kDrawClipboard, 1, 2);
    EXPECT_LT(forwarded.size(), 100u);
    forwarded.clear();
    for (int i = 0; i < 1000; ++i)
        Send(kChangeChain, Parameter(leaving), 0);
    EXPECT_EQ(forwarded.size(), 1u);
}

// Private numbers have no name, and a name that somebody registered first may be written another way.
TEST_F(ViewerHookTest, ClipboardWndProc_AnswersUnderTheNumberThatItAnnounced) {
    const FormatNumber other = Registered("rich text format");
    fake.files.SetBytes(kClip, RecordBytes(0x210, "<unbekannt>", "private") +
                                   RecordBytes(0xC123, "Rich Text Format", "rich"));
    ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 2));
    EXPECT_EQ(fake.clipboard.OtherProgramReads(0x210), "private");
    EXPECT_EQ(fake.clipboard.OtherProgramReads(other), "rich");
}
