#include "engine/flows/CaptureWatch.h"

#include <optional>

#include "engine/flows/SnapTest.h"
#include "platform/Busy.h"

namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

class CaptureWatchTest : public SnapTest {};

}  // namespace

TEST_F(CaptureWatchTest, UpdateClipBoard_LeavesTheSameContentAtTheNewestClip) {
    const auto takes = [&](const std::string& text) {
        const int before = folder->Children();
        CopyText(text);
        fake.clock.Advance(1s);
        flow.UpdateClipBoard();
        return folder->Children() > before;
    };
    EXPECT_TRUE(takes("eins") && takes("eins")) << "the option is off";
    Options().SkipSame = true;
    EXPECT_FALSE(takes("eins"));
    EXPECT_EQ(fake.user.LastStatus(), L"Der Inhalt steht schon im neuesten Clip, 'Clip'.");
    EXPECT_EQ(fake.files.AllFiles().size(), 4u) << "two clips, their profile and its journal";
    EXPECT_TRUE(takes("zwei") && takes("eins"));
    flow.Snap();
    EXPECT_EQ(folder->Children(), 5) << "on command it is taken all the same";
}

TEST_F(CaptureWatchTest, UpdateClipBoard_SaysWhatTheOwnerOwes) {
    const FormatNumber html = Registered("HTML Format");
    const auto owed = [&](FormatNumber format) {
        return FakeClipboard::Offer{format,
                                    [&](FakeClipboard&) {
                                        fake.clock.Advance(500ms);
                                        return DataHandle::None;
                                    },
                                    true};
    };
    Copy({owed(html), FakeClipboard::Bytes(8, "dib"), owed(Registered("PNG")),
          FakeClipboard::Bytes(1, "text\0"s), FakeClipboard::Refused(Registered("Refused"))});
    Options().UnknownFormats = 255;
    flow.UpdateClipBoard();
    window.BecomeIdle(fake.clock);
    constexpr auto kShortfall = L"Der Clip ist unvollständig: nicht geliefert wurden HTML Format, PNG";
    EXPECT_EQ(fake.user.LastStatus(), kShortfall);
    EXPECT_EQ(AttributesOf(LastClip()).info, kShortfall);
    EXPECT_EQ(StoredData(*LastClip()), (std::vector<std::string>{"dib", "text\0"s}));
}

// What a change asked for is made inside its message, while the next viewer waits; the rest comes later.
TEST_F(CaptureWatchTest, UpdateClipBoard_LeavesWhatMayStandOpenForLater) {
    Options().EditPropAfterSnap = true;
    Options().IconAfterSnap = true;
    fake.files.AddDirectory(L"C:\\CLIPS\\nxclip.nxp");  // where the profile's file is to stand
    Copy({FakeClipboard::Bytes(8, "dib"), FakeClipboard::Bytes(1, "text\0"s)});
    flow.UpdateClipBoard();
    EXPECT_EQ(window.done, L"changed save ");
    EXPECT_EQ(StoredData(*LastClip()), (std::vector<std::string>{"dib", "text\0"s}));
    EXPECT_TRUE(fake.user.messages.empty());
    // A second one before the user has time shows with the first.
    fake.clock.Advance(1s);
    CopyText("second");
    flow.UpdateClipBoard();
    ASSERT_EQ(window.later.size(), 1u);
    window.done.clear();
    // The user has left the program that copied.
    PreviousForeground = fake.clipboard.otherProgram;
    const WindowHandle elsewhere = fake.windows.foreground = fake.windows.AddWindow(L"Elsewhere");
    window.BecomeIdle(fake.clock);
    EXPECT_EQ(window.done, L"select show minimise ");
    EXPECT_EQ(fake.windows.foreground, elsewhere);
    EXPECT_EQ(nodes.Selected(), LastClip());
    EXPECT_EQ(fake.user.tellings.back(), L"Speichern des Profiles ist fehlgeschlagen !!!");
    EXPECT_TRUE(fake.user.messages.empty());
    EXPECT_TRUE(window.later.empty());
    // And so does the next one.
    CopyText("third");
    fake.clock.Advance(1s);
    flow.UpdateClipBoard();
    window.done.clear();
    window.BecomeIdle(fake.clock);
    EXPECT_EQ(window.done, L"select show minimise ");
}

TEST_F(CaptureWatchTest, UpdateClipBoard_WaitsForAnOpenMenuAndShowsNothingOfAClipThatIsGone) {
    Options().AutoSnap = true;
    CopyText("text");
    std::optional<BusyScope> menu(Busy::Menu);
    window.laterFails = true;
    EXPECT_THROW(flow.UpdateClipBoard(), std::bad_alloc);
    flow.UpdateClipBoard();
    flow.UpdateClipBoard();
    EXPECT_EQ(LastClip(), nullptr);
    ASSERT_EQ(window.later.size(), 1u);
    menu.reset();
    window.BecomeIdle(fake.clock);
    ASSERT_NE(LastClip(), nullptr);
    nodes.Remove(*LastClip());
    window.done.clear();
    window.BecomeIdle(fake.clock);
    EXPECT_EQ(window.done, L"");
}

TEST_F(CaptureWatchTest, UpdateClipBoard_TakesOnlyTheNewestOfABurst) {
    Options().AutoSnap = true;
    const auto clips = [&] { return folder->Children(); };
    CopyText("first");
    window.laterFails = true;
    EXPECT_THROW(flow.UpdateClipBoard(), std::bad_alloc) << "it is taken, and not shown";
    CopyText("second");
    fake.clock.Advance(1s);
    // The notices of one change, and of changes that a snap has seen already.
    for (int i = 0; i < 5; ++i)
        flow.UpdateClipBoard();
    EXPECT_EQ(clips(), 2);
    EXPECT_EQ(window.later.size(), 2u) << "to show it and to look again";

    // A hundred changes a second for ten seconds; each snap takes 30 ms, all of them its own work.
    fake.user.statuses.clear();
    int most = 0;
    for (int i = 0; i < 1000; ++i) {
        fake.clock.Advance(10ms);
        CopyText(std::to_string(i));
        const int before = clips();
        window.atStep = [&](const std::wstring& step) {
            if (step != L"save") return;
            fake.clock.Advance(30ms);
            fake.clock.ownWork += 30ms;
        };
        flow.UpdateClipBoard();
        most = std::max(most, static_cast<int>(window.later.size()));
        if (clips() == before && i % 3 == 0) window.BecomeIdle(fake.clock);
    }
    EXPECT_LE(most, 2);  // one to take, one to show
    const int taken = clips();
    EXPECT_LT(taken, 500);
    EXPECT_GT(taken, 20);
    window.BecomeIdle(fake.clock);
    window.BecomeIdle(fake.clock);
    EXPECT_LE(clips(), taken + 1);
    EXPECT_EQ(StoredData(*LastClip()), std::vector<std::string>{"999\0"s});
}

// The system tells of each change twice; the look that the second word calls for comes when the dialog has
// closed.
TEST_F(CaptureWatchTest, UpdateClipBoard_OffersACopyUnderADialogAndDoesNotTakeIt) {
    Options().AutoSnap = true;
    CopyText("eins");
    flow.UpdateClipBoard();
    flow.UpdateClipBoard();
    {
        const BusyScope dialog(Busy::Dialog);
        CopyText("zwei");
        flow.UpdateClipBoard();
        window.BecomeIdle(fake.clock);
    }
    flow.OfferMissed();
    for (int i = 0; i < 3; ++i)
        window.BecomeIdle(fake.clock);
    EXPECT_EQ(folder->Children(), 1);
    EXPECT_TRUE(flow.TakeMissed());
    EXPECT_EQ(folder->Children(), 2);
}

// Each copy's own notice comes before it is taken or after.
TEST_F(CaptureWatchTest, CopyTold_SaysHowManyWentBy) {
    Options().AutoSnap = true;
    const auto wordWhenQuiet = [&] {
        for (int i = 0; i < 6; ++i)
            window.BecomeIdle(fake.clock);
        return fake.user.LastStatus();
    };
    for (const char* const text : {"first", "by a command", "last"}) {
        CopyText(text);
        flow.CopyTold();
        text == "by a command"s ? flow.Snap() : flow.UpdateClipBoard();
    }
    EXPECT_EQ(wordWhenQuiet().find(L"vorüber"), std::wstring::npos);
    const auto wordOf = [&](int copies, bool toldAfterwards) {
        fake.clock.Advance(1s);
        for (int i = 0; i < copies; ++i) {
            CopyText(std::to_string(i));
            if (!toldAfterwards) flow.CopyTold();
            flow.UpdateClipBoard();
        }
        for (int i = 0; toldAfterwards && i < copies; ++i)
            flow.CopyTold();
        return wordWhenQuiet();
    };
    for (const bool afterwards : {false, true}) {
        EXPECT_EQ(wordOf(1, afterwards).find(L"vorüber"), std::wstring::npos);
        EXPECT_EQ(wordOf(2, afterwards).find(L"vorüber"), std::wstring::npos)
            << "the second is taken after the rest";
        EXPECT_EQ(wordOf(3, afterwards), L"Eine Kopie ging vorüber");
        EXPECT_EQ(wordOf(20, afterwards), L"18 Kopien gingen vorüber");
    }
    EXPECT_TRUE(window.later.empty());
}

TEST_F(CaptureWatchTest, UpdateClipBoard_ComesBackToABusyClipboard) {
    Options().AutoSnap = true;
    CopyText("text");
    fake.clipboard.OtherProgramHolds(4 * 4);
    window.laterFails = true;
    EXPECT_THROW(flow.UpdateClipBoard(), std::bad_alloc);
    fake.clock.Advance(1s);
    flow.UpdateClipBoard();
    std::chrono::milliseconds waited(0);
    while (LastClip() == nullptr && window.later.size() == 1) {
        waited += window.later[0].delay;
        window.BecomeIdle(fake.clock);
    }
    EXPECT_NE(LastClip(), nullptr);
    EXPECT_LT(waited, 2s);
    EXPECT_TRUE(fake.user.LastStatus().starts_with(L"Sichern"));

    fake.clock.Advance(1s);
    CopyText("never");
    fake.clipboard.OtherProgramHolds(1000);
    // More changes meanwhile do not make more tries at a time.
    for (int i = 0; i < 10; ++i) {
        flow.UpdateClipBoard();
        fake.clock.Advance(50ms);
        EXPECT_LE(window.later.size(), 2u);  // one after the rest, one to the busy clipboard
    }
    for (int i = 0; i < 10; ++i)
        window.BecomeIdle(fake.clock);
    EXPECT_EQ(folder->Children(), 1);
    EXPECT_TRUE(fake.user.LastStatus().starts_with(L"Eine Kopie wurde nicht erfasst: "));
    EXPECT_EQ(fake.files.AllFiles().size(), 3u);  // the first clip, the tree and its journal
}

// An owner that is asked for its data lets sent messages in.
// What he has promised nobody could read now; what is there already stays there.
TEST_F(CaptureWatchTest, UpdateClipBoard_LeavesTheClipboardFreeUntilTheOwnerTakesMessages) {
    Options().AutoSnap = true;
    const auto copyOfSilentOwner = [&](int unanswered) {
        fake.clock.Advance(1s);
        CopyText(std::to_string(unanswered));
        flow.CopyTold();
        fake.windows.unanswered = unanswered;
        flow.UpdateClipBoard();
    };
    const auto comeBack = [&](int times) {
        for (int i = 0; i < times; ++i)
            window.BecomeIdle(fake.clock);
    };
    fake.clipboard.OtherProgramHolds(1000);  // a try to open it is not made
    copyOfSilentOwner(30);
    comeBack(20);
    EXPECT_EQ(LastClip(), nullptr);
    EXPECT_EQ(fake.user.LastStatus(), L"Eine Kopie wartet: Das Programm, das kopiert hat, antwortet nicht.");
    EXPECT_TRUE(fake.files.AllFiles().empty());
    fake.clipboard.OtherProgramHolds(0);
    comeBack(15);
    EXPECT_EQ(StoredData(*LastClip()), std::vector<std::string>{"30\0"s});

    copyOfSilentOwner(1000);
    comeBack(3);
    copyOfSilentOwner(0);
    comeBack(6);
    EXPECT_EQ(folder->Children(), 2);
    EXPECT_EQ(fake.user.LastStatus(), L"Eine Kopie ging vorüber");
    EXPECT_TRUE(window.later.empty());
}
