#include "engine/flows/SetClipFlow.h"

#include "engine/flows/CaptureWatch.h"
#include "engine/flows/ClipFlowTest.h"

namespace {

using namespace std::string_literals;

class SetClipTest : public ClipFlowTest {
 protected:
    SetClipTest() {
        fake.files.SetBytes(L"C:\\CLIPS\\C7.nxc",
                            RecordBytes(1, "Text", "abc") + RecordBytes(8, "DIB", "dib"));
        nodes.Select(&AddClip(7, 2));
    }

    SetClipFlow flow{window, clipBoard};
};

}  // namespace

TEST_F(SetClipTest, SetClip_PutsTheSelectedClipOnTheClipboard) {
    flow.SetClip();
    EXPECT_EQ(fake.clipboard.Formats(), (std::vector<FormatNumber>{1, 8, OwnMarkerFormat}));
    EXPECT_EQ(fake.clipboard.OtherProgramReads(8), "dib");
    EXPECT_EQ(fake.user.beeps, 0);
    EXPECT_EQ(window.done, L"");

    Options().SetBeep = true;
    Options().IconAfterSetClip = true;
    PreviousForeground = fake.clipboard.otherProgram;
    flow.SetClip();
    EXPECT_EQ(fake.user.beeps, 1);
    EXPECT_EQ(window.done, L"minimise ");
    EXPECT_EQ(fake.windows.foreground, fake.clipboard.otherProgram);
}

TEST_F(SetClipTest, SetClip_IsNeverCapturedAgain) {
    CaptureWatch snap(window, clipBoard);
    TheMainWindowHooks.updateClipBoard = [&] { snap.UpdateClipBoard(); };
    Options().AutoSnap = true;
    const int before = nodes.Count();
    flow.SetClip();
    EXPECT_EQ(nodes.Count(), before);
    // Not even when the ownership has moved on and the change is reported late.
    fake.clipboard.ForgetOwner();
    fake.windows.Deliver(mainWindow, 0x0308, 0, 0);
    EXPECT_EQ(nodes.Count(), before);

    fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(1, "new")});
    window.BecomeIdle(fake.clock);
    EXPECT_EQ(nodes.Count(), before + 1);
}

TEST_F(SetClipTest, SetClip_DoesNothingWithoutAClip) {
    fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(1, "old\0"s)});
    for (Node* selected : {static_cast<Node*>(nullptr), folder, profile}) {
        nodes.Select(selected);
        flow.SetClip();
    }
    EXPECT_EQ(fake.clipboard.Content(1), "old\0"s);
    EXPECT_TRUE(fake.user.statuses.empty());
}

TEST_F(SetClipTest, SetClip_SaysWhyItFailsAndKeepsTheOldContentWhereItCan) {
    Options().SetBeep = true;
    fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(1, "old\0"s)});
    nodes.Selected()->SetTag(L"C&damaged");
    flow.SetClip();
    EXPECT_EQ(fake.user.statuses.size(), 1u);
    nodes.Selected()->SetTag(L"C&8,2&&");
    flow.SetClip();
    EXPECT_EQ(fake.user.LastStatus(), L"Datei C:\\CLIPS\\C8.nxc nicht verfügbar !!!");
    EXPECT_EQ(fake.clipboard.Content(1), "old\0"s);

    nodes.Selected()->SetTag(L"C&7,0&&");
    flow.SetClip();
    EXPECT_EQ(fake.user.LastMessage(), L"Keine Formate ermittelt");
    EXPECT_TRUE(fake.clipboard.Formats().empty());
    EXPECT_EQ(fake.user.beeps, 0);
}

TEST_F(SetClipTest, SetClip_WithOnlySomeFormats) {
    flow.SetClip(nodes.Selected(), IsPlainText);
    EXPECT_EQ(fake.clipboard.Formats(), (std::vector<FormatNumber>{1, OwnMarkerFormat}));
    EXPECT_EQ(fake.clipboard.OtherProgramReads(1), "ab\0"s);
    EXPECT_EQ(fake.user.LastStatus(), L"Clipboard erfolgreich gesetzt ...");

    flow.SetClip(nodes.Selected(), [](const CFormat& format) { return format.FormatName == L"DIB"; });
    EXPECT_EQ(fake.clipboard.OtherProgramReads(8), "dib");
    flow.SetClip(nodes.Selected(), [](const CFormat&) { return false; });
    EXPECT_EQ(fake.clipboard.Formats(), (std::vector<FormatNumber>{8, OwnMarkerFormat})) << "as it was";
}
