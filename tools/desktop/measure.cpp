// Measures NXClip from outside: measure [CLIPS [ROWS]].
//
// Prints one line a row: what was measured, a tab, the figure, a tab, its unit. CLIPS (10000 unless told
// otherwise) is the number of clips in the large profile; of the rows only those are measured whose name
// holds the text ROWS. The program is NXCLIP_EXE, or the one beside this one; tools/bench runs this for two
// builds in turn and compares them. With NXCLIP_FLOOR set the program is floor.exe, which is asked for no
// more than it can do.

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "desktop/ClipboardData.h"
#include "desktop/Driver.h"
#include "desktop/HostProcess.h"
#include "desktop/NextViewer.h"
#include "desktop/Settings.h"
#include "desktop/Utf8.h"
#include "desktop/WholeFile.h"
#include "engine/tree/TreeFile.h"
#include "engine/tree/modTreeEx.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRounds = 5;
constexpr std::size_t kKilobyte = 1024;
constexpr std::size_t kMegabyte = 1024 * kKilobyte;

std::string wantedRows;
const bool isFloor = std::getenv("NXCLIP_FLOOR") != nullptr;

bool IsWanted(const std::string& what) {
    return what.find(wantedRows) != std::string::npos;
}

void Row(const std::string& what, double figure, const char* unit) {
    if (!IsWanted(what)) return;
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
void LeastRow(const std::string& what, const std::function<double()>& once) {
    if (!IsWanted(what)) return;
    double least = once();
    for (int round = 1; round < kRounds; ++round)
        least = std::min(least, once());
    Row(what, least, "ms");
}

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

// A picture in 32-bit colours, each one unlike the one before it.
std::string NewPicture(std::size_t size) {
    static int number = 0;
    constexpr LONG kWidth = 2000;
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = kWidth;
    header.biHeight = static_cast<LONG>(size / (4 * kWidth));
    header.biPlanes = 1;
    header.biBitCount = 32;
    std::string picture(reinterpret_cast<const char*>(&header), sizeof header);
    picture.resize(picture.size() + size, static_cast<char>(++number * 40));
    return picture;
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

// When a file changed last; the library's own answer is in whole seconds.
std::uint64_t ChangeOf(const std::filesystem::path& file) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data);
    return std::uint64_t{data.ftLastWriteTime.dwHighDateTime} << 32 | data.ftLastWriteTime.dwLowDateTime;
}

class Measured {
 public:
    explicit Measured(int clips) {
        if (isFloor) {
            SetEnvironmentVariableW(L"NXCLIP_FLOOR", std::to_wstring(clips).c_str());
            std::filesystem::create_directories(nxclip_.ProfileDirectory());
        } else {
            nxclip_.Start();
            nxclip_.MakeProfile(L"Profil");
            nxclip_.Quit();
        }
        if (clips > 0) {
            WriteWholeFile(nxclip_.ProfileDirectory() / L"nxclip.nxp", LargeTreeFile(clips));
        }
    }

    struct Run {
        double start, quit;
    };
    Run StartAndQuit() {
        const double start = MillisecondsOf([&] {
            nxclip_.Start();
            nxclip_.Main().Send(WM_NULL);
        });
        return {start, MillisecondsOf([&] { nxclip_.Quit(); })};
    }
    void Begin() {
        nxclip_.Start();
        if (!isFloor) nxclip_.SetAutoDetect(true);
        taken_ = Items();
    }
    void End() { nxclip_.Quit(); }

    void TakePicture(std::size_t size) { Take(CF_DIB, NewPicture(size)); }
    void Take(UINT format, const std::string& content) {
        PutFormats({{format, content}});
        WaitFor(
            "the clip", [&] { return Items() > taken_; }, std::chrono::seconds(60));
        nxclip_.Main().Send(WM_NULL);
        taken_ = Items();
    }

    // How long the program takes to have the content as a clip in its tree, and answers again; how long the
    // next viewer waits; and when the preview shows the text.
    struct Capture {
        double taken, next, shown;
    };
    Capture TakeText(std::size_t size) {
        // After a capture the program rests for a moment before it takes the next one.
        constexpr DWORD kLongestRest = 300;
        Sleep(kLongestRest);
        const std::string text = NewText(size);
        const std::wstring first = FirstLine(text);
        const int toldBefore = NextViewer::told;
        // What the capture before left to be painted would stand in this one's way.
        RedrawWindow(nxclip_.Main().Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
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
    void ShowAsIcon(bool icon) { ShowWindow(nxclip_.Main().Handle(), icon ? SW_MINIMIZE : SW_RESTORE); }
    // The program's own processor time so far, milliseconds, once it does nothing any more.
    double ProcessorTimeWhenIdle() const {
        constexpr DWORD kIdle = 500;
        double before = -1;
        double now = ProcessorTime();
        for (int look = 0; look < 100 && now != before; ++look) {
            Sleep(kIdle);
            before = std::exchange(now, ProcessorTime());
        }
        return now;
    }
    // A file for each clip of the large profile: one record of a kilobyte of text.
    void WriteClips(int clips) const {
        std::string record("\x0d\0\0\0\x07\0Unicode\0\x04\0\0", 17);
        for (const char letter : NewText(kKilobyte / 2))
            record += {letter, '\0'};
        const auto size = static_cast<std::uint32_t>(record.size() - 17);
        std::memcpy(record.data() + 13, &size, sizeof size);
        for (int i = 1; i <= clips; ++i)
            WriteWholeFile(nxclip_.ProfileDirectory() / (L"C" + std::to_wstring(i) + L".nxc"), record);
    }
    // The longest times while letters are typed into the field and the contents are read that the letters
    // before them ask for; every clip fits.
    struct Typing {
        double longestKey = 0;      // until it is seen in its field
        double longestSilence = 0;  // between two answers of the program
    };
    // In milliseconds.
    Typing TypeWhileContentsAreSearched() const {
        constexpr double kBetweenKeys = 60;
        const Window field = nxclip_.Main().Control(tbFilter);
        Typing typing;
        for (const wchar_t letter : std::wstring_view(L"zeile, wie sie in einem text")) {
            typing.longestKey = std::max(typing.longestKey, MillisecondsOf([&] {
                                             field.Send(WM_CHAR, static_cast<WPARAM>(letter), 0);
                                             RedrawWindow(field.Handle(), nullptr, nullptr, RDW_UPDATENOW);
                                         }));
            const auto typed = Clock::now();
            while (MillisecondsSince(typed) < kBetweenKeys) {
                typing.longestSilence =
                    std::max(typing.longestSilence, MillisecondsOf([&] { nxclip_.Main().Send(WM_NULL); }));
                Sleep(1);
            }
        }
        return typing;
    }
    // Programs before there was one are measured too.
    bool HasSearchField() const { return static_cast<bool>(nxclip_.Main().FindControl(tbFilter)); }
    double MemoryWhenSearched(const std::wstring& words) const {
        nxclip_.Main().SetText(tbFilter, words);
        ProcessorTimeWhenIdle();
        return Memory();
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
    // From the confirmed question, or the typed name, to the change of the tree data file.
    double DeleteUntilSaved() {
        nxclip_.Tree().Select(LastClip());
        nxclip_.Command(m_edit_delete);
        const Notice question = nxclip_.WaitForNotice();
        const double time = MillisecondsUntilSaved([&] { Driver::Answer(question, IDYES); });
        taken_ = Items();
        return time;
    }
    double RenameUntilSaved() {
        static int number = 0;
        const Window tree = nxclip_.Tree().window();
        nxclip_.Tree().Select(LastClip());
        nxclip_.Command(m_edit_rename);
        const Window edit = WaitFor(
            "the name's edit", [&] { return Window(reinterpret_cast<HWND>(tree.Send(TVM_GETEDITCONTROL))); });
        const std::wstring name = L"Name " + std::to_wstring(++number);
        edit.Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
        return MillisecondsUntilSaved([&] { tree.Send(TVM_ENDEDITLABELNOW, FALSE); });
    }

    // Without a host that tells, what the system counts for the program alone.
    double Memory() const {
        if (const auto figures = OnHost()) return static_cast<double>(figures->memory) / kMegabyte;
        const HANDLE process =
            OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, nxclip_.Program().Id());
        PROCESS_MEMORY_COUNTERS counters{};
        GetProcessMemoryInfo(process, &counters, sizeof counters);
        CloseHandle(process);
        return static_cast<double>(counters.WorkingSetSize) / kMegabyte;
    }
    std::optional<HostFigures> OnHost() const { return FiguresOnHost((nxclip_.Directory()).wstring()); }

 private:
    // Wine tells nothing of the time of another process.
    double ProcessorTime() const {
        if (const auto figures = OnHost()) return figures->processorTime;
        const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, nxclip_.Program().Id());
        FILETIME ignored{}, kernel{}, user{};
        GetProcessTimes(process, &ignored, &ignored, &kernel, &user);
        CloseHandle(process);
        constexpr double kUnitsOfAMillisecond = 10'000;
        const auto units = [](const FILETIME& time) {
            return static_cast<double>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
        };
        return (units(kernel) + units(user)) / kUnitsOfAMillisecond;
    }
    HTREEITEM LastClip() const {
        const LRESULT last = nxclip_.Tree().window().Send(TVM_GETNEXTITEM, TVGN_LASTVISIBLE);
        return reinterpret_cast<HTREEITEM>(last);
    }
    double MillisecondsUntilSaved(const std::function<void()>& deed) const {
        const std::filesystem::path file = nxclip_.ProfileDirectory() / L"nxclip.nxp";
        const std::uint64_t before = ChangeOf(file);
        return MillisecondsOf([&] {
            deed();
            WaitFor("the tree data file", [&] { return ChangeOf(file) != before; });
        });
    }
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

void MeasureRuns(Measured& measured, const std::string& many) {
    if (!IsWanted("start" + many) && !IsWanted("quit" + many)) return;
    Measured::Run least = measured.StartAndQuit();
    for (int round = 1; round < kRounds; ++round) {
        const Measured::Run run = measured.StartAndQuit();
        least = {std::min(least.start, run.start), std::min(least.quit, run.quit)};
    }
    Row("start" + many, least.start, "ms");
    Row("quit" + many, least.quit, "ms");
}

// Of a program that has just started.
void StateRows(const Measured& measured, const std::string& many) {
    Row("memory" + many, measured.Memory(), "MiB");
    if (const auto figures = measured.OnHost())
        Row("start" + many + ", system writes", static_cast<double>(figures->systemWrites), "");
}

void MeasureEmpty() {
    Measured measured(0);
    MeasureRuns(measured, ", no clips");
    measured.Begin();
    StateRows(measured, ", no clips");
    measured.End();
}

void MeasureCaptures(Measured& measured, const std::string& what, std::size_t size) {
    if (!IsWanted("capture " + what + ", shown, next viewer waits")) return;
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

// What one capture of a kilobyte costs the machine; the mean of several, with all that follows when the
// program is idle.
void MeasureEffort(Measured& measured, const std::string& many) {
    constexpr DWORD kUntilIdle = 500;
    if (!IsWanted("capture 1 KB, system writes, bytes written")) return;
    // The first save names the profile's directory, which moves all that stands behind it.
    measured.TakeText(kKilobyte);
    Sleep(kUntilIdle);
    const auto before = measured.OnHost();
    if (!before) return;
    for (int round = 0; round < kRounds; ++round) {
        measured.TakeText(kKilobyte);
        Sleep(kUntilIdle);
    }
    const auto after = measured.OnHost();
    if (!after) return;
    const auto each = [](std::uint64_t from, std::uint64_t to) {
        return (static_cast<double>(to) - static_cast<double>(from)) / kRounds;
    };
    Row("capture 1 KB" + many + ", system writes", each(before->systemWrites, after->systemWrites), "");
    Row("capture 1 KB" + many + ", bytes written", each(before->written, after->written) / kKilobyte, "KiB");
}

// What a capture takes of the processor in the program itself, with all that follows when it is idle: the one
// figure of time that hardly depends on what else the machine does. The mean of several, since the system
// counts in hundredths of a second.
void MeasureProcessorTime(Measured& measured, const std::string& what, int rounds,
                          const std::function<std::string()>& text) {
    for (const bool icon : {false, true}) {
        const std::string row = "processor time, capture " + what + (icon ? ", as an icon" : ", shown");
        if (!IsWanted(row)) continue;
        measured.ShowAsIcon(icon);
        const double before = measured.ProcessorTimeWhenIdle();
        for (int round = 0; round < rounds; ++round)
            measured.Take(CF_TEXT, text());
        Row(row, (measured.ProcessorTimeWhenIdle() - before) / rounds, "ms");
        measured.ShowAsIcon(false);
    }
}

std::string NewLongLine() {
    static int number = 0;
    return std::to_string(++number) + std::string(kMegabyte, 'x') + '\0';
}

void MeasureSearch(int clips) {
    const std::string many = ", " + std::to_string(clips) + " clips";
    const std::string key = "longest key while contents are searched" + many;
    const std::string silence = "longest silence while contents are searched" + many;
    const std::string memory = "memory added by the search" + many;
    // Under Wine a new file takes as long as its directory is large: 100,000 would be half an hour.
    constexpr int kMostFiles = 20'000;
    if (isFloor || clips > kMostFiles ||
        (!IsWanted(key + silence) && !IsWanted(memory + ", no hit, all of them hits")))
        return;
    Measured measured(clips);
    measured.WriteClips(clips);
    measured.Begin();
    if (!measured.HasSearchField()) return measured.End();
    const double before = measured.Memory();
    Row(memory + ", no hit", measured.MemoryWhenSearched(L"nirgends") - before, "MiB");
    Row(memory + ", all of them hits", measured.MemoryWhenSearched(L"zeile") - before, "MiB");
    measured.MemoryWhenSearched(L"");
    const Measured::Typing typing = measured.TypeWhileContentsAreSearched();
    Row(key, typing.longestKey, "ms");
    Row(silence, typing.longestSilence, "ms");
    measured.End();
}

void MeasureLarge(int clips) {
    const std::string many = ", " + std::to_string(clips) + " clips";
    Measured measured(clips);
    MeasureRuns(measured, many);
    measured.Begin();
    StateRows(measured, many);
    MeasureProcessorTime(measured, "1 KB" + many, 20, [] { return NewText(kKilobyte); });
    MeasureProcessorTime(measured, "1 MB" + many, 5, [] { return NewText(kMegabyte); });
    MeasureProcessorTime(measured, "1 MB in one line" + many, 3, &NewLongLine);
    if (!isFloor) {
        LeastRow("search without hit" + many, [&] { return measured.SearchWithoutHit(); });
        LeastRow("rename, saved" + many, [&] { return measured.RenameUntilSaved(); });
        LeastRow("delete, saved" + many, [&] { return measured.DeleteUntilSaved(); });
    }
    MeasureEffort(measured, many);
    MeasureCaptures(measured, "1 KB" + many, kKilobyte);
    MeasureCaptures(measured, "1 MB" + many, kMegabyte);
    MeasureCaptures(measured, "30 MB" + many, 30 * kMegabyte);
    if (isFloor) return measured.End();
    LeastRow("switch between texts of 30 MB", [&] { return measured.SelectPrevious(); });
    LeastRow("put 30 MB back", [&] { return measured.PutBack(); });
    if (IsWanted("switch between pictures of 30 MB"))
        for (int clip = 0; clip < 2; ++clip)
            measured.TakePicture(30 * kMegabyte);
    LeastRow("switch between pictures of 30 MB", [&] { return measured.SelectPrevious(); });
    measured.End();
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    try {
        if (argc > 2) wantedRows = Utf8(argv[2]);
        const NextViewer viewer;
        MeasureEmpty();
        const int clips = argc > 1 ? _wtoi(argv[1]) : 10'000;
        MeasureLarge(clips);
        MeasureSearch(clips);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
