#include "desktop/Input.h"
#include "desktop/ProgramTest.h"

// Other programs' content becomes clips.

namespace {

class Capture : public ProgramTest {};

// A window of a program that the user works in, and a viewer in the clipboard's chain.
class WorkWindow {
 public:
    WorkWindow() {
        WNDCLASSW shape{};
        shape.lpfnWndProc = &WorkWindow::Procedure;
        shape.lpszClassName = L"NXClipWork";
        RegisterClassW(&shape);
        window_ = CreateWindowExW(0, shape.lpszClassName, L"Arbeit", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                  200, 100, nullptr, nullptr, nullptr, nullptr);
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        next_ = SetClipboardViewer(window_);
    }
    ~WorkWindow() {
        ChangeClipboardChain(window_, next_);
        DestroyWindow(window_);
    }
    WorkWindow(const WorkWindow&) = delete;
    WorkWindow& operator=(const WorkWindow&) = delete;

    HWND Handle() const { return window_; }
    int Changes() const { return changes_; }

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* const work = reinterpret_cast<WorkWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message != WM_DRAWCLIPBOARD || work == nullptr)
            return DefWindowProcW(window, message, wParam, lParam);
        ++work->changes_;
        return 0;
    }

    HWND window_ = nullptr;
    HWND next_ = nullptr;
    int changes_ = 0;
};

TEST_F(Capture, Snap_KeepsEveryFormatInItsOrder) {
    StartWithProfile();
    const std::vector<ClipboardOffer> offers = {
        {CF_UNICODETEXT, std::string("G\0r\0\xFC\0n\0\0\0", 10)},
        {Private(), std::string(200000, '\xA5')},
        {FormatNumber(L"Rich Text Format"), std::string("{\\rtf1 x}\0rest", 14)}};
    SnapOf(offers);
    EXPECT_EQ(TreeOutline(), L"Profil [Camera] open\n  Clip [Clip]\n");
    EXPECT_EQ(nxclip_.Title(), L"Formate von \"Profil\\Clip\"");

    const std::vector<ClipRecord> records = ReadClipFile(ClipFileAt(1));
    ASSERT_GE(records.size(), offers.size());
    for (std::size_t i = 0; i < offers.size(); ++i) {
        EXPECT_EQ(records[i].format, static_cast<std::int32_t>(offers[i].format));
        EXPECT_TRUE(records[i].bytes == offers[i].bytes) << records[i].name;
    }
    EXPECT_EQ(records[0].name, "Unicode");
    EXPECT_EQ(records[1].name, "NXClip Desktop Test");
    // The list shows what the file holds.
    const std::vector<std::wstring> names = nxclip_.List().Names();
    ASSERT_EQ(names.size(), records.size());
    EXPECT_EQ(names[1], L"NXClip Desktop Test");
    EXPECT_EQ(nxclip_.List().Row(1).back(), L"195 KB");
    EXPECT_EQ(nxclip_.StatusBar().Text(), std::to_wstring(records.size()) + L" Element(e)");
    // And the tree is on disk already.
    EXPECT_TRUE(std::filesystem::exists(nxclip_.ProfileDirectory() / L"nxclip.nxp"));
}

TEST_F(Capture, Automatic_TakesEachChangeWhileItIsOn) {
    StartWithProfile();
    PutFormats(PrivateOffers());
    nxclip_.SetAutoDetect(true);
    for (int clip = 1; clip <= 3; ++clip) {
        const std::set<HTREEITEM> before = nxclip_.Items();
        PutFormats({{Private(), "Nummer " + std::to_string(clip)}});
        nxclip_.WaitForNewClip(before);
        EXPECT_EQ(ReadClipFile(ClipFileAt(clip)).front().bytes, "Nummer " + std::to_string(clip));
    }
    nxclip_.SetAutoDetect(false);
    PutFormats({{Private(), "ungewollt"}});
    // A command is done in its turn, behind the notice of the change.
    SnapOf({{Private(), "gewollt"}});
    EXPECT_EQ(ReadClipFile(ClipFileAt(4)).front().bytes, "gewollt");
    EXPECT_EQ(nxclip_.Tree().Lines().size(), 5u);
}

TEST_F(Capture, Automatic_LeavesKeyboardClipboardAndTheNextViewerAlone) {
    WriteSetting(L"Settings", L"EditPropAfterSnap", L"1");
    const WorkWindow work;  // behind NXClip in the chain
    StartWithProfile();
    nxclip_.SetAutoDetect(true);
    SetForegroundWindow(work.Handle());
    WaitFor("the work in front", [&] { return GetForegroundWindow() == work.Handle(); });

    const int before = work.Changes();
    PutFormats({{Private(), "eins"}});
    const Window dialog = nxclip_.WaitForDialog(L"Clip-Eigenschaften");
    WaitFor("the next viewer", [&] { return work.Changes() == before + 1; });
    EXPECT_EQ(GetForegroundWindow(), work.Handle());
    EXPECT_NE(GetWindowLongPtrW(dialog.Handle(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    EXPECT_FALSE(nxclip_.Main().Enabled());
    // Nobody waits for the dialog, and it keeps further captures away.
    PutFormats({{Private(), "zwei"}});
    WaitFor("the next viewer", [&] { return work.Changes() == before + 2; });
    EXPECT_EQ(ReadFormatNow(Private()), "zwei");
    dialog.SetText(tbName, L"Süßes");
    dialog.Press(cb_ok);
    Driver::WaitUntilGone(dialog);
    nxclip_.WaitForTree(L"Profil [Camera] open\n  Süßes [Clip]\n");
    EXPECT_TRUE(nxclip_.Main().Enabled());
}

TEST_F(Capture, Automatic_StaysResponsiveInABurstAndTakesTheNewestOnce) {
    StartWithProfile();
    nxclip_.SetAutoDetect(true);
    constexpr int kChanges = 300;
    for (int i = 1; i <= kChanges; ++i) {
        PutFormats({{Private(), "Nummer " + std::to_string(i)}});
        if (i % 10 == 0) {
            EXPECT_NE(SendMessageTimeoutW(nxclip_.Main().Handle(), WM_NULL, 0, 0, SMTO_NORMAL, 1000, nullptr),
                      0);
        }
    }
    const std::string newest = "Nummer " + std::to_string(kChanges);
    int clips = 0, ofTheNewest = 0;
    WaitFor("the newest content", [&] {
        clips = ofTheNewest = 0;
        for (const auto& file : std::filesystem::directory_iterator(nxclip_.ProfileDirectory())) {
            if (file.path().extension() != L".nxc") continue;
            ++clips;
            try {
                const auto records = ReadClipFile(file.path());
                if (!records.empty() && records.front().bytes == newest) ++ofTheNewest;
            } catch (const std::runtime_error&) {
                // Being written just now.
            }
        }
        return ofTheNewest > 0;
    });
    nxclip_.SetAutoDetect(false);
    EXPECT_EQ(ofTheNewest, 1);
    EXPECT_LE(clips, kChanges);
    EXPECT_TRUE(nxclip_.Quiet());
}

}  // namespace
