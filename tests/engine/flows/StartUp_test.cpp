#include "engine/flows/StartUp.h"

#include "engine/clipboard/modClipboard.h"
#include "engine/clipboard/modViewerHook.h"
#include "engine/flows/modDragDrop.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/process/AppTest.h"
#include "engine/process/SearchCriteria.h"
#include "engine/profiles/CProfiles.h"

namespace {

// The machine and the screen: notes what start-up does with them.
class Host : public StartUpHost {
 public:
    bool OtherInstanceRuns() override { return otherRuns && waits < endsAfter; }
    void Wait(std::chrono::milliseconds) override { ++waits; }
    WindowHandle FindTopLevelWindow(const std::wstring& title) override {
        if (waits < windowAfter) return WindowHandle::None;
        steps.push_back(L"find " + title);
        return firstWindow;
    }
    bool IsMinimised(WindowHandle) override { return minimised; }
    void ShowNormal(WindowHandle window) override {
        steps.push_back(window == firstWindow ? L"show normal" : L"show another");
    }
    void ActivateByTitle(const std::wstring& title) override { steps.push_back(L"activate " + title); }
    void ShowSplash() override {
        steps.push_back(L"splash with " + std::to_wstring(Profiles().Count()) + L" profiles");
    }
    void ShowMainWindow() override {
        steps.push_back(L"main window with " + std::to_wstring(Profiles().Count()) + L" profiles");
    }

    bool otherRuns = false;
    int waits = 0;
    int windowAfter = 0;
    int endsAfter = 1'000'000;
    bool minimised = false;
    WindowHandle firstWindow = WindowHandle::None;
    std::vector<std::wstring> steps;
};

using Steps = std::vector<std::wstring>;

class StartUpTest : public AppTest {
 protected:
    StartUpTest() {
        AppPath.clear();  // nothing is known before
    }

    void StoreProfile() {
        fake.settings.Set(L"Profiles", L"Count", L"1");
        fake.settings.Set(L"Profiles", L"Name1", L"Texte");
        fake.settings.Set(L"Profiles", L"File1", L"C:\\TEXTE");
    }
    Host host;
};

TEST_F(StartUpTest, StartUp_SetsEverythingUpInItsOrder) {
    StoreProfile();
    PreviousForeground = static_cast<WindowHandle>(0x1234);
    DiagnosticsOpen = RequestTrace = true;
    FormatSetsChanged = true;
    TheSearchCriteria().downward = false;
    Options().UserInfo = L"left over";
    Options().AutoSnap = true;
    FirstStartPending = false;

    EXPECT_TRUE(StartUp(host, L"", L" c:\\Programme\\NXClip "));
    EXPECT_EQ(host.steps, (Steps{L"splash with 0 profiles", L"main window with 1 profiles"}));
    EXPECT_EQ(PreviousForeground, WindowHandle::None);
    EXPECT_FALSE(DiagnosticsOpen || RequestTrace);
    EXPECT_EQ(FormatSetFile, L"C:\\PROGRAMME\\NXCLIP\\NXClip.nxf");
    EXPECT_EQ(HelpFile, L"C:\\PROGRAMME\\NXCLIP\\Nxclip.hlp");
    EXPECT_FALSE(FormatSetsChanged);
    EXPECT_TRUE(TheSearchCriteria().downward);
    EXPECT_NE(DraggedNodeFormat(), 0);
    EXPECT_NE(OwnMarkerFormat, 0);
    EXPECT_EQ(Options().UserInfo, L"");
    EXPECT_FALSE(Options().AutoSnap);
    EXPECT_EQ(Options().KeyActivate, L"L");
    EXPECT_TRUE(FirstStartPending);
    EXPECT_TRUE(fake.files.AllFiles().empty());
}

TEST_F(StartUpTest, StartUp_SecondInstance_ActivatesTheFirstAndEnds) {
    host.otherRuns = true;
    host.firstWindow = static_cast<WindowHandle>(0x4711);
    host.minimised = true;
    EXPECT_FALSE(StartUp(host, L"DEBUG", L"C:\\NXClip"));
    EXPECT_EQ(host.steps, (Steps{L"find NXClip", L"show normal", L"activate NXClip"}));
    EXPECT_NE(Log().find("Main: Mehr als eine Instance erkannt"), std::string::npos);

    host.steps.clear();
    host.minimised = false;
    EXPECT_FALSE(StartUp(host, L"", L"C:\\NXClip"));
    EXPECT_EQ(host.steps, (Steps{L"find NXClip", L"activate NXClip"}));
    EXPECT_TRUE(fake.user.messages.empty());
}

TEST_F(StartUpTest, StartUp_SecondInstance_WaitsForAFirstOneThatHasNoWindowYet) {
    host.otherRuns = true;
    host.firstWindow = static_cast<WindowHandle>(0x4711);
    host.windowAfter = 5;
    EXPECT_FALSE(StartUp(host, L"", L"C:\\NXClip"));
    EXPECT_EQ(host.steps, (Steps{L"find NXClip", L"activate NXClip"}));
    // It ends without a window: this one takes its place in silence.
    host.waits = 0;
    host.endsAfter = 3;
    EXPECT_TRUE(StartUp(host, L"", L"C:\\NXClip"));
    EXPECT_TRUE(fake.user.messages.empty());
    // It hangs: that is told, after some seconds.
    host.waits = 0;
    host.windowAfter = host.endsAfter = 1'000'000;
    EXPECT_TRUE(StartUp(host, L"", L"C:\\NXClip"));
    EXPECT_GT(host.waits, 20);
    EXPECT_EQ(fake.user.messages.size(), 1u);
}

TEST_F(StartUpTest, StartUp_FirstStartIsPendingOnlyWhileDialogReadsAsZero) {
    const auto pendingFor = [this](const wchar_t* stored) {
        fake.settings.Set(L"Settings", L"Dialog", stored);
        StartUp(host, L"", L"C:\\NXClip");
        return FirstStartPending;
    };
    EXPECT_TRUE(pendingFor(L"0"));
    EXPECT_FALSE(pendingFor(L"1"));
    EXPECT_TRUE(pendingFor(L"kaputt"));
}

}  // namespace
