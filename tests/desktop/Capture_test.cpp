#include "desktop/HostProcess.h"
#include "desktop/Input.h"
#include "desktop/NextViewer.h"
#include "desktop/ProgramTest.h"

// Other programs' content becomes clips.

namespace {

class Capture : public ProgramTest {};

TEST_F(Capture, Automatic_LeavesKeyboardClipboardAndTheNextViewerAlone) {
    WriteSetting(L"Settings", L"EditPropAfterSnap", L"1");
    const NextViewer work(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    StartWithProfile();
    nxclip_.SetAutoDetect(true);
    SetForegroundWindow(work.Handle());
    WaitFor("the work in front", [&] { return GetForegroundWindow() == work.Handle(); });

    const int before = work.told;
    PutFormats({{Private(), "eins"}});
    const Window dialog = nxclip_.WaitForDialog(L"Clip-Eigenschaften");
    WaitFor("the next viewer", [&] { return work.told == before + 1; });
    EXPECT_EQ(GetForegroundWindow(), work.Handle());
    EXPECT_NE(GetWindowLongPtrW(dialog.Handle(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    EXPECT_FALSE(nxclip_.Main().Enabled());
    // Nobody waits for the dialog, and it keeps further captures away.
    PutFormats({{Private(), "zwei"}});
    WaitFor("the next viewer", [&] { return work.told == before + 2; });
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

// What is drawn twice, or for nobody, is dozens of questions to the window server each time.
TEST_F(Capture, Automatic_CostsFewQuestionsToTheSystem) {
    constexpr int kUntilTheTreeScrolls = 10, kCounted = 5;
    constexpr std::uint64_t kMostShown = 560, kMostAsIcon = 240;  // for each
    WriteSetting(L"Settings", L"ShowInTray", L"0");
    StartWithProfile();
    nxclip_.SetAutoDetect(true);
    SetWindowPos(nxclip_.Main().Handle(), nullptr, 0, 0, 900, 300, SWP_NOMOVE | SWP_NOZORDER);
    int number = 0;
    const std::filesystem::path tree = nxclip_.ProfileDirectory() / L"nxclip.nxp";
    const std::filesystem::path journal = nxclip_.ProfileDirectory() / L"nxclip.jnl";
    // Looks at files alone: a look at the window would count.
    const auto capture = [&](int times) {
        for (; times > 0; --times) {
            const auto before = std::filesystem::file_size(tree);
            PutFormats({{CF_TEXT, "Text " + std::to_string(++number) + '\0'}});
            WaitFor("the saved clip", [&] { return std::filesystem::file_size(tree) > before; });
            WaitFor("what follows when it is idle", [&] { return !std::filesystem::exists(journal); });
        }
    };
    const auto questions = [&] {
        const auto figures = FiguresOnHost(nxclip_.Directory().wstring());
        return figures ? figures->systemWrites : 0;
    };
    capture(kUntilTheTreeScrolls);
    const std::uint64_t atFirst = questions();
    if (atFirst == 0) GTEST_SKIP() << "nobody counts them here";
    capture(kCounted);
    const std::uint64_t shown = questions();
    EXPECT_LT(shown - atFirst, kCounted * kMostShown);
    ShowWindow(nxclip_.Main().Handle(), SW_MINIMIZE);
    capture(1);
    const std::uint64_t icon = questions();
    capture(kCounted);
    EXPECT_LT(questions() - icon, kCounted * kMostAsIcon);
    ShowWindow(nxclip_.Main().Handle(), SW_RESTORE);
    WaitFor("the newest text",
            [&] { return nxclip_.Main().TextOf(tbPreviewText) == L"Text " + std::to_wstring(number); });
    EXPECT_EQ(nxclip_.Tree().Selected(), nxclip_.Tree().Lines().back().item);
}

}  // namespace
