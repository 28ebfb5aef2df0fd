// Kills NXClip at random moments while it captures, moves and saves, and looks at what is left: kill TIMES
// [SEED].
//
// After each kill the program is started anew. Every clip that stood before must be there with its data, the
// two profiles must be in the list, and nothing may be told to be damaged. Prints what was lost, and in the
// end how many kills came before and how many after the change stood; the exit code is 1 when anything was
// lost.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "desktop/ClipFile.h"
#include "desktop/ClipboardData.h"
#include "desktop/Driver.h"
#include "desktop/Input.h"
#include "desktop/Settings.h"
#include "desktop/Utf8.h"
#include "desktop/WholeFile.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/formatsets/FormatSetCoding.h"
#include "engine/tree/TreeFile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kClipBytes = 700'000;
constexpr int kKillsOfAWorld = 25;
constexpr ULONGLONG kLongestStart = 60'000;  // milliseconds; it mends what the kill left
constexpr int kLongestDelay = 90'000;        // microseconds; the longest change takes about that long

std::mt19937 randomNumbers;
int lost = 0;
int tornBeforeTheStart = 0;
std::map<std::string, std::pair<int, int>> killed;  // by kind of change: before and after it stood

int Random(int below) {
    return static_cast<int>(randomNumbers() % static_cast<unsigned>(below));
}

void Lost(const std::string& what) {
    std::printf("LOST: %s\n", what.c_str());
    std::fflush(stdout);
    ++lost;
}

void WaitMicroseconds(int microseconds) {
    LARGE_INTEGER frequency, now, end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&end);
    end.QuadPart += frequency.QuadPart * microseconds / 1'000'000;
    // Other programs want to be answered meanwhile: this one owns the clipboard. The moment itself is not
    // slept over.
    const LONGLONG lastPause = end.QuadPart - frequency.QuadPart / 100;
    do {
        QueryPerformanceCounter(&now);
        if (now.QuadPart < lastPause) Pause();
    } while (now.QuadPart < end.QuadPart);
}

std::string DataOf(int clip) {
    return std::string(kClipBytes, static_cast<char>('a' + clip % 26)) + std::to_string(clip);
}

std::wstring NameOf(int clip) {
    return L"Nummer " + std::to_wstring(clip);
}

std::vector<std::uint8_t> BytesOf(const fs::path& path) {
    const std::string bytes = ReadWholeFile(path);
    return {bytes.begin(), bytes.end()};
}

// Two profiles, "Profil" and "Zweites", and the clips that were seen to stand.
class World {
 public:
    World() {
        WriteSetting(L"Settings", L"NewTextMode", L"1");
        nxclip_.Start();
        nxclip_.MakeProfile(L"Profil");
        MakeSecond();
        // The list of profiles is written when the program ends.
        nxclip_.Restart();
    }

    void KillOnce() {
        const std::string change = Change();
        // Most changes are short.
        WaitMicroseconds(Random(Random(3) == 0 ? kLongestDelay : kLongestDelay / 5));
        const bool ended = !nxclip_.Running();
        nxclip_.Program().Terminate();
        LookAtTheDisk();
        StartAnew();
        LookAtTheClips();
        auto& [before, after] = killed[change];
        ++(ended || Stands() ? after : before);
        wanted_ = 0;
        wantedProfile_.clear();
    }

 private:
    void MakeSecond() {
        const fs::path directory = nxclip_.Directory() / L"Zweites";
        fs::create_directories(directory);
        nxclip_.Command(mnuFileNew);
        const Window dialog = nxclip_.WaitForDialog(L"Neue Profil");
        dialog.SetText(tbName, L"Zweites");
        dialog.SetText(tbDir, directory.wstring());
        dialog.Press(cb_ok);
        Driver::WaitUntilGone(dialog);
        WaitFor("the second profile", [&] { return nxclip_.Tree().Lines().size() == 2; });
    }

    // Begins a change and returns its kind; whether it ever ends is the killer's affair.
    std::string Change() {
        const int kind = Random(10);
        if (kind < 6 || standing_.empty()) return Capture();
        if (kind < 8) return Move();
        return End(kind == 9);
    }
    std::string Capture() {
        wanted_ = ++lastClip_;
        wantedProfile_ = L"Profil";
        PutFormats({{CF_TEXT, AnsiFromText(NameOf(wanted_)) + '\0'}, {kFormat, DataOf(wanted_)}});
        nxclip_.Command(m_edit_insert);
        return "capture";
    }
    std::string Move() {
        const auto& [clip, profile] =
            *std::next(standing_.begin(), Random(static_cast<int>(standing_.size())));
        const std::wstring target = profile == L"Profil" ? L"Zweites" : L"Profil";
        nxclip_.Tree().Expand(profile);
        BringToFront(nxclip_.Main());
        wanted_ = clip;
        wantedProfile_ = target;
        Drag(nxclip_.Tree().PlaceOf(profile + L"\\" + NameOf(clip)), nxclip_.Tree().PlaceOf(target));
        return "move";
    }
    // The options, the profile list and, once changed, the format sets are saved at the end.
    std::string End(bool withFormatSets) {
        if (withFormatSets) {
            PutFormats({{FormatNumber(L"Format " + std::to_wstring(++lastFormat_)), "x"}});
            nxclip_.Command(m_extra_fs);
            const Window sets = nxclip_.WaitForDialog(L"Formatsätze");
            sets.Press(Command1);
            const Window rename = nxclip_.WaitForDialog(L"Formatsatznamen ändern");
            rename.SetText(txtNew, L"Satz " + std::to_wstring(lastFormat_));
            rename.Press(cb_ok);
            Driver::WaitUntilGone(rename);
            sets.Press(cb_ok);
            Driver::WaitUntilGone(sets);
        }
        nxclip_.Program().MayEnd();
        nxclip_.Command(mnuFileClose);
        return withFormatSets ? "end with format sets" : "end";
    }

    // What a power cut would leave, before any program has mended it.
    void LookAtTheDisk() {
        for (const wchar_t* name : {L"Profil\\nxclip.nxp", L"Zweites\\nxclip.nxp"}) {
            try {
                DecodeTreeData(BytesOf(nxclip_.Directory() / name));
            } catch (const RuntimeError&) {
                ++tornBeforeTheStart;
            }
        }
    }

    void StartAnew() {
        nxclip_.Launch();
        const ULONGLONG deadline = GetTickCount64() + kLongestStart;
        bool up = false;
        while (!up && GetTickCount64() < deadline) {
            for (Window window : TopLevelWindows(nxclip_.Program().Id())) {
                if (window.ClassName() == L"#32770") AnswerQuestion();
                up |= window.ClassName() == L"NXClipMain" && window.Visible();
            }
            Pause();
        }
        nxclip_.WaitForMain();
        for (bool quiet = false; !quiet;) {
            // Answered behind everything that the start has still to say.
            nxclip_.Main().Send(WM_NULL);
            quiet = nxclip_.Quiet();
            if (!quiet) AnswerQuestion();
        }
    }
    void AnswerQuestion() {
        const Notice notice = nxclip_.WaitForNotice();
        // What the last capture left is offered; everything else that a start says is a loss.
        const bool offer = notice.text.find(L"Clips ohne Eintrag gefunden") != std::wstring::npos;
        if (!offer) Lost("the start says: " + Utf8(notice.text));
        Driver::Answer(notice, offer ? IDYES : IDOK);
    }

    // Reads both profiles from the disk: which clip stands where, and whether its data is whole.
    void LookAtTheClips() {
        if (ReadSetting(L"Profiles", L"Count") != L"2") Lost("a profile is gone from the list");
        const fs::path sets = nxclip_.Directory() / L"NXClip.nxf";
        if (fs::exists(sets)) {
            try {
                FormatSetList list;
                DecodeFormatSets(BytesOf(sets), list);
            } catch (const RuntimeError& error) {
                Lost("the format sets: " + Utf8(error.Description()));
            }
        }
        std::map<int, std::wstring> now;
        for (const wchar_t* profile : {L"Profil", L"Zweites"})
            ReadProfile(profile, now);
        for (const auto& [clip, profile] : standing_) {
            if (!now.contains(clip)) Lost(Utf8(NameOf(clip)) + " that stood in " + Utf8(profile));
        }
        standing_ = now;
    }
    void ReadProfile(const std::wstring& profile, std::map<int, std::wstring>& now) {
        const fs::path directory = nxclip_.Directory() / profile;
        TreeData data;
        try {
            data = DecodeTreeData(BytesOf(directory / L"nxclip.nxp"));
        } catch (const RuntimeError& error) {
            Lost("the tree of " + Utf8(profile) + ": " + Utf8(error.Description()));
            return;
        }
        for (const TreeNodeRecord& node : data.Nodes) {
            if (!node.Tag.starts_with(L"C&") || !node.Text.starts_with(L"Nummer ")) continue;
            const int clip = std::stoi(node.Text.substr(7));
            const std::wstring number = node.Tag.substr(2, node.Tag.find(L',') - 2);
            if (IsWhole(directory / (L"C" + number + L".nxc"), clip))
                now[clip] = profile;
            else if (standing_.contains(clip))
                Lost("the data of " + Utf8(node.Text));
        }
    }
    static bool IsWhole(const fs::path& file, int clip) {
        try {
            const std::vector<ClipRecord> records = ReadClipFile(file);
            return std::any_of(records.begin(), records.end(),
                               [&](const ClipRecord& record) { return record.bytes == DataOf(clip); });
        } catch (const std::exception&) {
            return false;
        }
    }
    bool Stands() const {
        const auto found = standing_.find(wanted_);
        return found != standing_.end() && found->second == wantedProfile_;
    }

    const UINT kFormat = FormatNumber(L"NXClip Kill");
    Driver nxclip_;
    std::map<int, std::wstring> standing_;  // each clip's profile
    int lastClip_ = 0;
    int lastFormat_ = 0;
    int wanted_ = 0;  // the clip that the change under way brings, and where; 0 for none
    std::wstring wantedProfile_;
};

void Run(int times) {
    std::unique_ptr<World> world;
    for (int i = 0; i < times; ++i) {
        if (i % kKillsOfAWorld == 0) {
            world.reset();
            world = std::make_unique<World>();
        }
        world->KillOnce();
    }
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const int times = count > 1 ? std::stoi(arguments[1]) : 50;
    const unsigned seed = count > 2 ? static_cast<unsigned>(std::stoul(arguments[2])) : GetTickCount();
    randomNumbers.seed(seed);
    std::printf("%d kills with the seed %u\n", times, seed);
    std::fflush(stdout);
    try {
        Run(times);
    } catch (const std::exception& error) {
        Lost(error.what());
    }
    for (const auto& [change, moments] : killed)
        std::printf("%-22s %4d before, %4d after it stood\n", change.c_str(), moments.first, moments.second);
    std::printf("%d files were torn before the program mended them; %d losses\n", tornBeforeTheStart, lost);
    return lost == 0 ? 0 : 1;
}
