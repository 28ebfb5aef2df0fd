// Kills NXClip at random moments while it captures, moves, saves, gets and loses profiles and options, and
// looks at what is left: kill TIMES [SEED].
//
// After each kill the program is started anew. Every clip that stood before must be there with its data, the
// list of profiles and the options as they were or as they were to be, and nothing may be told to be damaged.
// Prints what was lost, and in the end how many kills came before and how many after the change stood; the
// exit code is 1 when anything was lost.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "desktop/ClipFile.h"
#include "desktop/ClipboardData.h"
#include "desktop/Driver.h"
#include "desktop/HungViewer.h"
#include "desktop/Input.h"
#include "desktop/LeftProfiles.h"
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
constexpr double kShortestDelay = 1000, kLongestDelay = 1'000'000;  // microseconds

std::mt19937 randomNumbers;
int lost = 0;
int tornBeforeTheStart = 0;

// One kind of change: how many kills came before and how many after it stood, and up to which delay they are
// tried. That follows what the change takes on this machine, so that about half of them come before.
struct Moments {
    int before = 0;
    int after = 0;
    double longestDelay = 20'000;  // microseconds

    void Note(bool stands) {
        ++(stands ? after : before);
        longestDelay = std::clamp(longestDelay * (stands ? 0.8 : 1.25), kShortestDelay, kLongestDelay);
    }
};
std::map<std::string, Moments> killed;

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

using ProfileList = std::map<std::wstring, std::wstring>;  // names and directories

// The program writes what lies beside it with a path in capitals.
std::wstring AsListed(const fs::path& directory) {
    return LowerCase(directory.wstring());
}

bool IsHalf(const ProfileList::value_type& entry) {
    return entry.first.empty() || entry.second.empty();
}

// As the store has it; the program may be writing there.
ProfileList StoredListNow() {
    ProfileList list;
    const std::wstring count = ReadSetting(L"Profiles", L"Count").value_or(L"");
    for (int i = 1; i <= std::stoi(L"0" + count); ++i) {
        const std::wstring name = ReadSetting(L"Profiles", L"Name" + std::to_wstring(i)).value_or(L"");
        list[name] = AsListed(ReadSetting(L"Profiles", L"File" + std::to_wstring(i)).value_or(L""));
    }
    return list;
}

// Once nobody writes there.
ProfileList StoredList() {
    ProfileList list = StoredListNow();
    if (std::erase_if(list, IsHalf) > 0) Lost("an entry of the list has no name or no directory");
    return list;
}

// Two profiles, "Profil" and "Zweites", further ones that come and go, and the clips that were seen to stand.
class World {
 public:
    World() {
        WriteSetting(L"Settings", L"NewTextMode", L"1");
        WriteSetting(L"Settings", L"KeepDeleted", L"1");
        nxclip_.Start();
        nxclip_.MakeProfile(L"Profil");
        MakeProfile(L"Zweites");
        WaitFor("the second profile", [&] { return nxclip_.Tree().Lines().size() == 2; });
        MakeTemplate();
        list_ = StoredList();
        if (list_.size() != 2) Lost("a profile that was just made is not in the list");
    }

    void KillOnce() {
        stands_ = [] { return false; };
        Moments& moments = killed[Change()];
        WaitMicroseconds(Random(static_cast<int>(moments.longestDelay)));
        const bool ended = !nxclip_.Running();
        nxclip_.Program().Terminate();
        viewer_.reset();
        LookAtTheDisk();
        StartAnew();
        const bool stands = LookAtTheLeads();
        LookAtTheClips();
        moments.Note(ended || stands || stands_());
    }

 private:
    void MakeProfile(const std::wstring& name) {
        const fs::path directory = nxclip_.Directory() / name;
        fs::create_directories(directory);
        wantedList_ = list_;
        wantedList_[name] = AsListed(directory);
        nxclip_.Command(mnuFileNew);
        const Window dialog = nxclip_.WaitForDialog(L"Neue Profil");
        dialog.SetText(tbName, name);
        dialog.SetText(tbDir, directory.wstring());
        dialog.Press(cb_ok);
    }
    // For the first start's "Office", whose directories are there.
    void MakeTemplate() {
        const fs::path templates = nxclip_.Directory() / L"Templates";
        fs::create_directories(templates);
        // Until the new profile is saved for the first time it bears the template's name.
        TreeData data = DecodeTreeData(BytesOf(nxclip_.Directory() / L"Zweites" / L"nxclip.nxp"));
        data.Nodes.at(1).Text = L"Office";
        const std::vector<std::uint8_t> bytes = EncodeTreeData(data);
        WriteWholeFile(templates / L"Office.nxp", {bytes.begin(), bytes.end()});
        fs::create_directories(OfficeDirectory());
    }
    fs::path OfficeDirectory() const { return nxclip_.Directory() / L"Daten" / L"Office"; }

    // Begins a change and returns its kind; whether it ever ends is the killer's affair.
    std::string Change() {
        const int kind = Random(20);
        if (kind < 6 || standing_.empty()) return Capture();
        if (kind >= 16) return DeleteSeveral(kind);
        if (kind < 8) return Move();
        if (kind < 11) return End(kind == 9, kind == 10);
        if (kind < 12) return ChangeOptions();
        return ChangeList();
    }
    std::string ChangeOptions() {
        wantedInfo_ = L"Info " + std::to_wstring(++lastInfo_);
        nxclip_.Command(mnuViewOptions);
        const Window options = nxclip_.WaitForDialog(L"Optionen");
        options.SetText(tbInfo, wantedInfo_);
        options.Press(cb_ok);
        if (Random(3) == 0) {
            Driver::WaitUntilGone(options);
            nxclip_.Main().Send(WM_NULL);
            info_ = wantedInfo_;  // has to stand from here on
        }
        return "options";
    }
    // A profile more or one less. When the tree was seen to follow, the list has to.
    std::string ChangeList() {
        std::string change;
        const bool office = list_.contains(L"Office");
        if (list_.size() < 4 && Random(2) == 0) {
            MakeProfile(L"Weiteres " + std::to_wstring(++lastProfile_));
            change = "new profile";
        } else if (!office) {
            change = AttachOffice() ? "import" : "first start";
        } else {
            Unlink();
            change = "unlink";
        }
        if (Random(3) == 0) {
            WaitFor("the tree to follow the list", [&] { return TopNames() == NamesOf(wantedList_); });
            WaitFor("the list in the store", [&] { return StoredListNow() == wantedList_; });
            list_ = wantedList_;
        }
        return change;
    }
    // By the first start's dialog; what lies in the directory already is imported then.
    bool AttachOffice() {
        wantedList_ = list_;
        wantedList_[L"Office"] = AsListed(OfficeDirectory());
        const bool there = fs::exists(OfficeDirectory() / L"nxclip.nxp");
        nxclip_.Command(m_quickstart);
        const Window dialog = nxclip_.WaitForDialog(L"Norvale - Der Manger für die Zwischenablage");
        for (const int box : {int{chkTemplate} + 1, int{chkRecommended}})
            if (dialog.Checked(box) != (box != chkRecommended)) dialog.Press(box);
        dialog.Press(cb_ok);
        if (there) nxclip_.AnswerNotice(IDYES);
        return there;
    }
    void Unlink() {
        auto gone = list_.find(L"Office");
        for (auto entry = list_.begin(); entry != list_.end(); ++entry)
            if (entry->first.starts_with(L"Weiteres") && Random(2) == 0) gone = entry;
        wantedList_ = list_;
        wantedList_.erase(gone->first);
        nxclip_.Tree().Select(gone->first);
        nxclip_.Command(m_PP_UnlinkProfil);
        nxclip_.AnswerNotice(IDYES);
    }
    std::set<std::wstring> TopNames() const {
        std::set<std::wstring> names;
        for (const TreeLine& line : nxclip_.Tree().Lines())
            if (line.depth == 0) names.insert(line.text);
        return names;
    }
    static std::set<std::wstring> NamesOf(const ProfileList& list) {
        std::set<std::wstring> names;
        for (const auto& entry : list)
            names.insert(entry.first);
        return names;
    }
    std::string Capture() {
        const int clip = ++lastClip_;
        PutFormats({{CF_TEXT, AnsiFromText(NameOf(clip)) + '\0'}, {kFormat, DataOf(clip)}});
        nxclip_.Command(m_edit_insert);
        stands_ = [this, clip] { return standing_.contains(clip); };
        return "capture";
    }
    std::string Move() {
        const auto& [clip, profile] =
            *std::next(standing_.begin(), Random(static_cast<int>(standing_.size())));
        if (deleted_[profile].contains(clip)) return Capture();
        const std::wstring target = profile == L"Profil" ? L"Zweites" : L"Profil";
        nxclip_.Tree().Expand(profile);
        BringToFront(nxclip_.Main());
        stands_ = [this, clip = clip, target] { return standing_[clip] == target; };
        Drag(nxclip_.Tree().PlaceOf(profile + L"\\" + NameOf(clip)), nxclip_.Tree().PlaceOf(target));
        return "move";
    }
    // Into the folder for what is deleted; back from there; or for good, what lies there.
    std::string DeleteSeveral(int kind) {
        const std::wstring profile = StandingProfile();
        const std::set<int> deleted = deleted_[profile];
        nxclip_.Tree().Select(profile);
        if (kind == 16 && !deleted.empty()) {
            nxclip_.Command(m_PP_emptyDeleted);
            mayGo_ = deleted;
            stands_ = [this, profile] { return deleted_[profile].empty(); };
            nxclip_.AnswerNotice(IDYES);
            return "emptying";
        }
        const bool withTheFolder = ChooseRows(profile);
        const std::vector<std::wstring> names = nxclip_.List().Names();
        PressKeys({VK_DELETE});
        if (withTheFolder) {
            mayGo_ = deleted;
            stands_ = [this, profile, deleted] { return deleted_[profile] != deleted; };
            nxclip_.AnswerNotice(IDYES);
            return "deletion with folder";
        }
        stands_ = [this, profile, deleted] { return deleted_[profile].size() > deleted.size(); };
        if (kind == 17) return "deletion of several";
        WaitFor("the deletion", [&] { return nxclip_.List().Names() != names; });
        stands_ = [this, profile, deleted] { return deleted_[profile] == deleted; };
        PressKeys({VK_CONTROL, 'Z'});
        return "deletion taken back";
    }
    // One that has clips.
    std::wstring StandingProfile() {
        return std::next(standing_.begin(), Random(static_cast<int>(standing_.size())))->second;
    }
    // Up to three rows of the profile; true when the folder for what is deleted is among them.
    bool ChooseRows(const std::wstring& profile) {
        const ListControl list = nxclip_.List();
        WaitFor("the rows of " + Utf8(profile), [&] { return list.Count() == rows_[profile]; });
        const std::vector<std::wstring> names = list.Names();
        const int last = Random(list.Count());
        const int rows = std::min(3, last + 1);
        BringToFront(nxclip_.Main());
        Click(list.PlaceOf(last));
        for (int row = 1; row < rows; ++row)
            PressKeys({VK_SHIFT, VK_UP});
        WaitFor("the rows to be chosen",
                [&] { return static_cast<int>(list.window().Send(LVM_GETSELECTEDCOUNT)) == rows; });
        const auto end = names.begin() + last + 1;
        return std::count(end - rows, end, L"Gelöscht") > 0;
    }
    // Another viewer that hangs must not keep the program from storing everything first.
    std::string End(bool withFormatSets, bool withHungViewer) {
        if (withHungViewer) {
            viewer_ = std::make_unique<HungViewer>();
            viewer_->Hang();
        }
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
        return withFormatSets ? "end with format sets" : withHungViewer ? "end, viewer hangs" : "end";
    }

    // Before any program has mended it.
    void LookAtTheDisk() {
        const LeftProfiles left = ProfilesLeftBelow(nxclip_.Directory());
        for (const std::string& loss : left.losses)
            Lost(loss);
        tornBeforeTheStart += left.brokenSaves;
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

    // The list of profiles and the options are as they were or as they were to be. True when what was to be
    // stands.
    bool LookAtTheLeads() {
        const ProfileList list = StoredList();
        const bool changes = !wantedList_.empty() && wantedList_ != list_;
        if (list != list_ && !(changes && list == wantedList_)) {
            for (const auto& [name, directory] : list_)
                if (!list.contains(name)) Lost("forgotten: the profile " + Utf8(name));
            for (const auto& [name, directory] : list)
                if (!list_.contains(name)) Lost("nobody wanted the profile " + Utf8(name));
        }
        if (TopNames() != NamesOf(list)) Lost("the tree does not show the profiles of the list");
        const std::wstring info = ReadSetting(L"Settings", L"UserInfo").value_or(L"");
        if (info != info_ && info != wantedInfo_) Lost("the option " + Utf8(info_) + " reads " + Utf8(info));
        const bool stands = (changes && list == wantedList_) || (!wantedInfo_.empty() && info == wantedInfo_);
        list_ = list;
        info_ = info;
        wantedList_.clear();
        wantedInfo_.clear();
        return stands;
    }

    // Reads both profiles from the disk: which clip stands where, and whether its data is whole.
    void LookAtTheClips() {
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
        deleted_.clear();
        for (const wchar_t* profile : {L"Profil", L"Zweites"})
            ReadProfile(profile, now);
        for (const auto& [clip, profile] : standing_) {
            if (!now.contains(clip) && !mayGo_.contains(clip))
                Lost(Utf8(NameOf(clip)) + " that stood in " + Utf8(profile));
        }
        standing_ = now;
        mayGo_.clear();
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
        rows_[profile] = 0;
        bool isDeleted = false;
        for (const TreeNodeRecord& node : data.Nodes) {
            rows_[profile] += node.Depth == 1;
            if (node.Depth == 1) isDeleted = node.Text == L"Gelöscht";
            if (!node.Tag.starts_with(L"C&") || !node.Text.starts_with(L"Nummer ")) continue;
            const int clip = std::stoi(node.Text.substr(7));
            const std::wstring number = node.Tag.substr(2, node.Tag.find(L',') - 2);
            if (isDeleted) deleted_[profile].insert(clip);
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

    const UINT kFormat = FormatNumber(L"NXClip Kill");
    Driver nxclip_;
    std::map<int, std::wstring> standing_;           // each clip's profile
    std::map<std::wstring, std::set<int>> deleted_;  // of each profile, those in the folder for it
    std::set<int> mayGo_;                            // by the change under way
    std::map<std::wstring, int> rows_;               // directly in each profile
    int lastClip_ = 0;
    int lastFormat_ = 0;
    ProfileList list_;
    ProfileList wantedList_;  // empty when the change under way is another one
    int lastProfile_ = 0;
    std::wstring info_;
    std::wstring wantedInfo_;
    int lastInfo_ = 0;
    std::unique_ptr<HungViewer> viewer_;
    std::function<bool()> stands_;  // whether the change under way stands, as far as the clips tell
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
        std::printf("%-22s %4d before, %4d after it stood\n", change.c_str(), moments.before, moments.after);
    std::printf("%d saves were broken off and mended by the next start; %d losses\n", tornBeforeTheStart,
                lost);
    return lost == 0 ? 0 : 1;
}
