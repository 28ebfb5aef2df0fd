// Measures NXClip from outside: measure [CLIPS].
//
// Prints one line a row: what was measured, a tab, the figure, a tab, its unit. CLIPS (10000 unless told
// otherwise) is the number of clips in the large profile. The program is NXCLIP_EXE, or the one beside this
// one; tools/bench runs this for two builds in turn and compares them.

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

#include "desktop/ClipboardData.h"
#include "desktop/Driver.h"
#include "desktop/Settings.h"
#include "desktop/WholeFile.h"
#include "engine/tree/TreeFile.h"
#include "engine/tree/modTreeEx.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRounds = 5;
constexpr std::size_t kKilobyte = 1024;
constexpr std::size_t kMegabyte = 1024 * kKilobyte;

void Row(const std::string& what, double figure, const char* unit) {
    std::printf("%s\t%.1f\t%s\n", what.c_str(), figure, unit);
    std::fflush(stdout);
}

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double MillisecondsOf(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return MillisecondsSince(start);
}

// The least of several times: whatever else the machine does only adds to it.
double Least(const std::function<double()>& once) {
    double least = once();
    for (int round = 1; round < kRounds; ++round)
        least = std::min(least, once());
    return least;
}

// A viewer that stands behind the program in the chain, and notes when it is told.
class NextViewer {
 public:
    NextViewer() {
        WNDCLASSW shape{};
        shape.lpfnWndProc = &NextViewer::Procedure;
        shape.lpszClassName = L"NextViewer";
        RegisterClassW(&shape);
        window_ =
            CreateWindowExW(0, shape.lpszClassName, L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
        next_ = SetClipboardViewer(window_);
    }
    ~NextViewer() {
        ChangeClipboardChain(window_, next_);
        DestroyWindow(window_);
    }
    NextViewer(const NextViewer&) = delete;
    NextViewer& operator=(const NextViewer&) = delete;

    static inline int told = 0;
    static inline Clock::time_point toldAt;

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != WM_DRAWCLIPBOARD) return DefWindowProcW(window, message, wParam, lParam);
        ++told;
        toldAt = Clock::now();
        return 0;
    }
    HWND window_ = nullptr;
    HWND next_ = nullptr;
};

// A text of this size in lines; each one differs from the one before, so that it can be told from it.
std::string NewText(std::size_t size) {
    static int number = 0;
    std::string text = "Text " + std::to_string(++number) + "\r\n";
    const std::string line = "Eine Zeile, wie sie in einem Text von einiger Laenge steht.\r\n";
    while (text.size() + line.size() < size)
        text += line;
    text.push_back('\0');
    return text;
}

std::wstring FirstLine(const std::string& text) {
    return std::wstring(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(text.find('\r')));
}

std::string LargeTreeFile(int clips) {
    TreeData data;
    const auto add = [&](const std::wstring& tag, const std::wstring& text, std::int16_t depth,
                         const std::wstring& picture, bool expanded) {
        TreeNodeRecord record;
        record.Tag = tag;
        record.Text = text;
        record.Depth = depth;
        record.Image = picture;
        record.Expanded = expanded;
        data.Nodes.push_back(record);
        ++data.Count;
    };
    add(MakeProfileTag(clips, L"x", false, L""), L"Profil", 0, L"Profile", true);
    for (int i = 1; i <= clips; ++i)
        add(MakeClipTag(i, 5, L"15.11.1999 13:10:00", L""), L"Ein Clip mit Namen " + std::to_wstring(i), 1,
            L"Clip", false);
    const auto image = EncodeTreeData(data);
    return std::string(image.begin(), image.end());
}

class Measured {
 public:
    explicit Measured(int clips) {
        nxclip_.Start();
        nxclip_.MakeProfile(L"Profil");
        nxclip_.Quit();
        if (clips > 0) {
            WriteWholeFile(nxclip_.ProfileDirectory() / L"nxclip.nxp", LargeTreeFile(clips));
        }
    }

    double Start() {
        const double time = MillisecondsOf([&] {
            nxclip_.Start();
            nxclip_.Main().Send(WM_NULL);
        });
        nxclip_.Quit();
        return time;
    }
    void Begin() {
        nxclip_.Start();
        nxclip_.SetAutoDetect(true);
        taken_ = Items();
    }
    void End() { nxclip_.Quit(); }

    // How long the program takes to have the content as a clip in its tree, and answers again; how long the
    // next viewer waits; and when the preview shows the text.
    struct Capture {
        double taken, next, shown;
    };
    Capture TakeText(std::size_t size) {
        const std::string text = NewText(size);
        const std::wstring first = FirstLine(text);
        const int toldBefore = NextViewer::told;
        const auto start = Clock::now();
        PutFormats({{CF_TEXT, text}});
        Capture times{};
        WaitFor(
            "the clip", [&] { return Items() > taken_; }, std::chrono::seconds(60));
        nxclip_.Main().Send(WM_NULL);
        times.taken = MillisecondsSince(start);
        const Window box = nxclip_.Main().Control(tbPreviewText);
        WaitFor(
            "its text", [&] { return TextBegins(box, first); }, std::chrono::seconds(60));
        times.shown = MillisecondsSince(start);
        WaitFor("the next viewer", [&] { return NextViewer::told > toldBefore; });
        times.next = std::chrono::duration<double, std::milli>(NextViewer::toldAt - start).count();
        taken_ = Items();
        return times;
    }
    double PutBack() {
        return MillisecondsOf([&] { nxclip_.PutOnClipboard(); });
    }
    double SearchWithoutHit() {
        nxclip_.Command(m_search);
        const Window dialog = nxclip_.WaitForDialog(L"Suchen");
        dialog.SetText(tbSearch, L"nirgends");
        dialog.Press(cb_ok);
        const auto start = Clock::now();
        const Notice notice = nxclip_.WaitForNotice();
        const double time = MillisecondsSince(start);
        Driver::Answer(notice, IDOK);
        return time;
    }
    // From clip to clip by the arrow keys' message, until the program answers again.
    double SelectPrevious() {
        const Window tree = nxclip_.Tree().window();
        const auto selected = tree.Send(TVM_GETNEXTITEM, TVGN_CARET, 0);
        const auto before = tree.Send(TVM_GETNEXTITEM, TVGN_PREVIOUS, selected);
        const double there = MillisecondsOf([&] {
            tree.Send(TVM_SELECTITEM, TVGN_CARET, before);
            nxclip_.Main().Send(WM_NULL);
        });
        tree.Send(TVM_SELECTITEM, TVGN_CARET, selected);
        return there;
    }
    double Memory() const {
        const HANDLE process =
            OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, nxclip_.Program().Id());
        PROCESS_MEMORY_COUNTERS counters{};
        GetProcessMemoryInfo(process, &counters, sizeof counters);
        CloseHandle(process);
        return static_cast<double>(counters.WorkingSetSize) / static_cast<double>(kMegabyte);
    }

 private:
    LRESULT Items() const { return nxclip_.Tree().window().Send(TVM_GETCOUNT); }
    // Reading only its beginning: a text of a megabyte is read faster than it is shown, but not for nothing.
    static bool TextBegins(Window box, const std::wstring& text) {
        wchar_t beginning[64] = L"";
        DWORD_PTR ignored = 0;
        SendMessageTimeoutW(box.Handle(), WM_GETTEXT, std::size(beginning),
                            reinterpret_cast<LPARAM>(beginning), SMTO_NORMAL, 10000, &ignored);
        return std::wstring_view(beginning).starts_with(text);
    }

    Driver nxclip_;
    LRESULT taken_ = 0;
};

void MeasureEmpty() {
    Measured measured(0);
    Row("start, no clips", Least([&] { return measured.Start(); }), "ms");
    measured.Begin();
    Row("memory, no clips", measured.Memory(), "MiB");
    measured.End();
}

void MeasureCaptures(Measured& measured, const std::string& what, std::size_t size) {
    Measured::Capture least = measured.TakeText(size);
    for (int round = 1; round < kRounds; ++round) {
        const Measured::Capture times = measured.TakeText(size);
        least.taken = std::min(least.taken, times.taken);
        least.next = std::min(least.next, times.next);
        least.shown = std::min(least.shown, times.shown);
    }
    Row("capture " + what, least.taken, "ms");
    Row("capture " + what + ", shown", least.shown, "ms");
    Row("capture " + what + ", next viewer waits", least.next, "ms");
}

void MeasureLarge(int clips) {
    const std::string many = ", " + std::to_string(clips) + " clips";
    Measured measured(clips);
    Row("start" + many, Least([&] { return measured.Start(); }), "ms");
    measured.Begin();
    Row("memory" + many, measured.Memory(), "MiB");
    Row("search without hit" + many, Least([&] { return measured.SearchWithoutHit(); }), "ms");
    MeasureCaptures(measured, "1 KB" + many, kKilobyte);
    MeasureCaptures(measured, "1 MB" + many, kMegabyte);
    MeasureCaptures(measured, "30 MB" + many, 30 * kMegabyte);
    Row("switch between texts of 30 MB", Least([&] { return measured.SelectPrevious(); }), "ms");
    Row("put 30 MB back", Least([&] { return measured.PutBack(); }), "ms");
    measured.End();
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    try {
        const NextViewer viewer;
        MeasureEmpty();
        MeasureLarge(argc > 1 ? _wtoi(argv[1]) : 10'000);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
