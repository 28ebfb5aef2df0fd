#include "engine/clipboard/modClipboard.h"

#include <numeric>

#include "engine/clipboard/ClipboardTest.h"

namespace {

using namespace std::chrono_literals;

class ClipboardUnitTest : public ClipboardTest {
 protected:
    // A clip of "Text" and "Rich Text Format" in kClip.
    void StoreClip() {
        fake.files.SetBytes(kClip, RecordBytes(1, "Text", std::string("abc\0", 4)) +
                                       RecordBytes(0xC0FE, "Rich Text Format", "{\\rtf1}"));
    }
};

}  // namespace

TEST_F(ClipboardUnitTest, OpenClipboardFor_WaitsForAnotherProgramButNotLong) {
    fake.clipboard.OtherProgramHolds(3);
    EXPECT_TRUE(OpenClipboardFor(mainWindow));
    fake.clipboard.Close();
    EXPECT_TRUE(fake.user.statuses.empty());

    const auto waited = [&](Patience patience) {
        fake.clock.pauses.clear();
        fake.user.statuses.clear();
        fake.clipboard.OtherProgramHolds(1000);
        EXPECT_FALSE(OpenClipboardFor(mainWindow, patience));
        const auto& pauses = fake.clock.pauses;
        EXPECT_TRUE(std::is_sorted(pauses.begin(), pauses.end()));
        return std::accumulate(pauses.begin(), pauses.end(), 0ms);
    };
    EXPECT_EQ(waited(Patience::Little), 20ms);
    EXPECT_TRUE(fake.user.statuses.empty());
    EXPECT_EQ(waited(Patience::Usual), 500ms);
    EXPECT_FALSE(fake.user.statuses.empty());
    EXPECT_EQ(waited(Patience::Long), 3000ms);
}

TEST_F(ClipboardUnitTest, RestoreClip_AnnouncesEveryFormatAndTheMarkerWithoutReadingData) {
    StoreClip();
    fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(8, "old")});
    EXPECT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 2));

    const FormatNumber richText = Registered("Rich Text Format");
    EXPECT_EQ(fake.clipboard.Formats(), (std::vector<FormatNumber>{1, richText, OwnMarkerFormat}));
    EXPECT_TRUE(fake.clipboard.IsPending(1) && fake.clipboard.IsPending(richText));
    EXPECT_EQ(fake.clipboard.Content(OwnMarkerFormat), std::string("\1\0\0\0", 4));
    EXPECT_TRUE(HoldsOwnMarker());

    EXPECT_EQ(fake.clipboard.OtherProgramReads(richText), "{\\rtf1}");
    EXPECT_EQ(fake.clipboard.OtherProgramReads(1), std::string("abc\0", 4));
    EXPECT_EQ(fake.clipboard.rendered, (std::vector<FormatNumber>{richText, 1}));
}

TEST_F(ClipboardUnitTest, RestoreClip_WithoutReadableFormatsEmptiesTheClipboardAndSaysSo) {
    StoreClip();
    ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 2));
    fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(1, "old")});
    fake.files.SetBytes(kClip, "");
    EXPECT_FALSE(RestoreClip(clipBoard, mainWindow, kClip, 0));
    EXPECT_EQ(fake.user.LastMessage(), L"Keine Formate ermittelt");
    EXPECT_TRUE(fake.clipboard.Formats().empty());
    EXPECT_FALSE(RestoreClip(clipBoard, mainWindow, kClip, 1));
    EXPECT_EQ(RenderFormats, nullptr) << "the clip before does not answer any more";
    EXPECT_EQ(fake.user.LastMessage(), L"Keine Formate ermittelt");
}

// What the loss of the current leaves of a file that was still in the system's cache.
TEST_F(ClipboardUnitTest, RestoreClip_OfAFileOfZeros_SaysSoOnceAndLeavesTheClipboard) {
    fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(8, "old")});
    fake.files.SetBytes(kClip, std::string(66'000, '\0'));
    EXPECT_FALSE(RestoreClip(clipBoard, mainWindow, kClip, 3));
    EXPECT_EQ(fake.user.messages.size(), 1u);
    EXPECT_NE(fake.user.LastStatus().find(L"ist beschädigt"), std::wstring::npos);
    EXPECT_EQ(fake.clipboard.OtherProgramReads(8), "old");

    fake.files.SetBytes(kClip, RecordBytes(8, "DIB", "abc") + std::string(100, '\0'));
    EXPECT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 2)) << "what is whole comes back";
    EXPECT_EQ(fake.clipboard.OtherProgramReads(8), "abc");
    EXPECT_EQ(fake.user.LastStatus(), L"Clipboard unvollständig gesetzt, es fehlt: 1 nicht lesbar");
}

TEST_F(ClipboardUnitTest, RestoreClip_LeavesAllAsItWasUntilFileAndClipboardAreOpen) {
    StoreClip();
    ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 2));
    const auto pending = RenderFormats;

    EXPECT_FALSE(RestoreClip(clipBoard, mainWindow, L"C:\\CLIPS\\C2.nxc", 2));
    EXPECT_EQ(fake.user.LastStatus(), L"Datei C:\\CLIPS\\C2.nxc nicht verfügbar !!!");
    fake.clipboard.OtherProgramHolds(1000);
    EXPECT_FALSE(RestoreClip(clipBoard, mainWindow, kClip, 1));
    fake.clipboard.OtherProgramHolds(0);
    fake.FailNth(Operation::ClipboardEmpty, 1);
    EXPECT_FALSE(RestoreClip(clipBoard, mainWindow, kClip, 1));

    EXPECT_EQ(RenderFormats, pending);
    EXPECT_EQ(fake.clipboard.OtherProgramReads(1), std::string("abc\0", 4));
    EXPECT_TRUE(fake.user.messages.empty());
}

// A memory block under the number of a handle would be freed by the system as if it were one.
TEST_F(ClipboardUnitTest, RestoreClip_LeavesOutWhatStandsForGdiObjectsAndNamesWhatIsMissing) {
    std::string bytes;
    std::int16_t count = 0;
    for (const std::int32_t id : {2, 9, 130, 131, 142, 0x300, 0x3FF, 8}) {
        bytes += RecordBytes(id, "F" + std::to_string(id), "data");
        ++count;
    }
    fake.files.SetBytes(kClip, bytes + "torn");
    EXPECT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, static_cast<std::int16_t>(count + 1)));
    EXPECT_EQ(fake.clipboard.Formats(), (std::vector<FormatNumber>{8, OwnMarkerFormat}));
    EXPECT_EQ(
        fake.user.LastStatus(),
        L"Clipboard unvollständig gesetzt, es fehlt: F2, F9, F130, F131, F142, F768, F1023, 1 nicht lesbar");
    EXPECT_TRUE(RenderAllFormats());

    const auto formats = Headers(RecordBytes(2, "Bitmap", "data"), 1);
    FileOwner file(OpenClipFile(kClip, false, true));
    OpenClipboardScope opened(mainWindow);
    ASSERT_TRUE(formats->Item(1).LoadDataFromFile(file.Get(), false));
    EXPECT_FALSE(formats->Item(1).SetToClipboard());
}

TEST_F(ClipboardUnitTest, RestoreClip_RegistersNamesAnewAfterASystemRestart) {
    StoreClip();
    const std::string bytes = ClipBytes();
    FakePlatform restarted;
    restarted.clipboard.RegisterName("Another");
    restarted.clipboard.RegisterName("Program's Formats");
    restarted.files.SetBytes(kClip, bytes);
    ClearPendingRenderSet();
    OriginalWndProc = ProcedureAddress::None;
    OwnViewer = WindowHandle::None;
    HookMainWindow(restarted);

    ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 2));
    const FormatNumber richText = restarted.clipboard.RegisterName("Rich Text Format");
    EXPECT_EQ(restarted.clipboard.OtherProgramReads(richText), "{\\rtf1}");

    ClearPendingRenderSet();
    DisconnectViewer();
    UnsubclassWindow();
}

TEST_F(ClipboardUnitTest, RenderBeforeTheEnd_WaitsForWhatIsHeldOnceATryAndSaysWhatWouldBeLost) {
    StoreClip();
    ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 2));
    fake.files.LockByOther(kClip);
    const int opened = fake.failures.Calls(Operation::FilesOpen);
    fake.user.answers = {true, true};
    fake.user.duringMessage = [&] {
        if (fake.user.questions.size() == 2) fake.files.UnlockByOther(kClip);
    };
    RenderBeforeTheEnd();
    ASSERT_EQ(fake.user.questions.size(), 2u);
    EXPECT_NE(fake.user.questions[0].text.find(L"Text, Rich Text Format"), std::wstring::npos);
    EXPECT_EQ(fake.failures.Calls(Operation::FilesOpen), opened + 3) << "once a try";
    EXPECT_EQ(fake.clipboard.Content(1), std::string("abc\0", 4));

    // The end waits longer for it than a command does.
    ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 2));
    fake.clipboard.OtherProgramHolds(8);
    RenderBeforeTheEnd();
    EXPECT_EQ(fake.user.questions.size(), 2u);
    EXPECT_EQ(fake.clipboard.Content(1), std::string("abc\0", 4));

    ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 2));
    fake.clipboard.OtherProgramHolds(1000);
    RenderBeforeTheEnd();
    EXPECT_EQ(fake.user.questions.size(), 3u) << "given up";
    EXPECT_EQ(RenderFormats, nullptr);
}

TEST_F(ClipboardUnitTest, RenderAllFormats_MakesEveryAnnouncementRealForTheOwnerOnly) {
    StoreClip();
    ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 2));
    fake.failures.FailAlways(Operation::FilesOpen);
    EXPECT_FALSE(RenderAllFormats());
    fake.failures.FailNone();
    // A window on its way out gets no render message any more.
    UnsubclassWindow();
    EXPECT_TRUE(RenderAllFormats());
    fake.files.Remove(kClip);
    EXPECT_EQ(fake.clipboard.Content(1), std::string("abc\0", 4));
    EXPECT_EQ(fake.clipboard.Content(Registered("Rich Text Format")), "{\\rtf1}");

    // Another program replaces the content while the clipboard is waited for.
    StoreClip();
    ASSERT_TRUE(RestoreClip(clipBoard, mainWindow, kClip, 2));
    fake.clipboard.OtherProgramHolds(1);
    fake.clock.duringPause = [this] {
        fake.clipboard.OtherProgramCopies({FakeClipboard::Late(FakeClipboard::Bytes(1, "x"))});
    };
    EXPECT_TRUE(RenderAllFormats());
    EXPECT_TRUE(fake.clipboard.IsPending(1));
    EXPECT_EQ(fake.clipboard.Formats().size(), 1u);
    EXPECT_EQ(fake.user.messages.size(), 0u);
}
