// Prints what becomes of quick copies: 1 to 20 of them, with pauses between, for NXClip alone in the viewer
// chain, with a viewer in front, behind, and both. Of each row: how many copies became clips, how many it
// said had gone by, how many of those the status bar still tells of, and how often the chain was joined anew.
// Takes the pauses in milliseconds, if others are wanted.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "desktop/ClipboardData.h"
#include "desktop/Driver.h"
#include "desktop/Peers.h"
#include "desktop/Utf8.h"
#include "desktop/WholeFile.h"

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr int kMostCopies = 20;
const std::vector<int> kUsualPauses = {0, 10, 40, 200};

struct Row {
    int copies = 0;
    int taken = 0;
    int said = 0;
    int lostInSilence = 0;
    int twice = 0;
    int standing = 0;
};

void PauseFor(milliseconds duration) {
    for (const auto end = Clock::now() + duration; Clock::now() < end; Pause())
        continue;
}

class Trial {
 public:
    Trial(bool inFront, bool behind) {
        if (behind) behind_ = std::make_unique<Peer>(L"viewer");
        nxclip_.Start(L"DEBUG");
        nxclip_.MakeProfile(L"Profil");
        nxclip_.SetAutoDetect(true);
        if (inFront) inFront_ = std::make_unique<Peer>(L"viewer");
    }

    Row Copies(int pause) {
        Row row;
        for (int copies = 1; copies <= kMostCopies; ++copies) {
            const int clipsBefore = Clips(), saidBefore = Said();
            for (int i = 0; i < copies; ++i) {
                PutFormats({{kFormat, "Kopie " + std::to_string(++number_)}});
                if (i + 1 < copies) PauseFor(milliseconds(pause));
            }
            const auto accountedFor = [&] { return Clips() - clipsBefore + Said() - saidBefore; };
            WaitUntilQuiet();
            // On a busy machine the word comes late; one that never comes is waited for in vain.
            const auto end = Clock::now() + std::chrono::seconds(10);
            while (accountedFor() < copies && Clock::now() < end)
                WaitUntilQuiet();
            row.copies += copies;
            row.taken += Clips() - clipsBefore;
            row.said += Said() - saidBefore;
            row.lostInSilence += std::max(copies - accountedFor(), 0);
            row.twice += std::max(accountedFor() - copies, 0);
            row.standing += StatusBarTellsOf();
        }
        return row;
    }
    int Rejoins() const {
        const std::string log = Log();
        int times = 0;
        for (std::size_t at = 0; (at = log.find("joined anew", at)) != std::string::npos; ++at)
            ++times;
        return times;
    }

 private:
    int Clips() const {
        int clips = 0;
        for (const auto& file : std::filesystem::directory_iterator(nxclip_.ProfileDirectory()))
            if (file.path().extension() == L".nxc") ++clips;
        return clips;
    }
    // Nothing has been taken and said for a while.
    void WaitUntilQuiet() const {
        std::wstring status;
        int clips = -1;
        auto since = Clock::now();
        while (Clock::now() - since < milliseconds(800)) {
            Pause();
            const std::wstring newStatus = nxclip_.StatusBar().Text();
            const int newClips = Clips();
            if (newStatus != status || newClips != clips) since = Clock::now();
            status = newStatus;
            clips = newClips;
        }
    }
    std::string Log() const { return ReadWholeFile(nxclip_.Directory() / L"protokol.txt"); }
    int Said() const {
        int copies = 0;
        std::istringstream log(Log());
        for (std::string line; std::getline(log, line);)
            if (line.find(" ging") != std::string::npos) copies += CopiesIn(line.substr(line.find(": ") + 2));
        return copies;
    }
    int StatusBarTellsOf() const {
        const std::wstring status = nxclip_.StatusBar().Text();
        return status.find(L" ging") != std::wstring::npos ? CopiesIn(Utf8(status)) : 0;
    }
    static int CopiesIn(const std::string& word) { return word.starts_with("Eine") ? 1 : std::stoi(word); }

    const UINT kFormat = FormatNumber(L"NXClip Copies");
    std::unique_ptr<Peer> behind_, inFront_;
    Driver nxclip_;
    int number_ = 0;
};

}  // namespace

int wmain(int count, wchar_t** arguments) {
    try {
        std::vector<int> pauses;
        for (int i = 1; i < count; ++i)
            pauses.push_back(std::stoi(arguments[i]));
        if (pauses.empty()) pauses = kUsualPauses;
        std::printf("%-19s %6s %7s %6s %6s %16s %6s %9s %8s\n", "other viewers", "pause", "copies", "taken",
                    "said", "lost in silence", "twice", "standing", "rejoins");
        for (const auto& [name, inFront, behind] : {std::tuple{"none", false, false},
                                                    {"one in front", true, false},
                                                    {"one behind", false, true},
                                                    {"in front and behind", true, true}}) {
            Trial trial(inFront, behind);
            for (const int pause : pauses) {
                const int rejoins = trial.Rejoins();
                const Row row = trial.Copies(pause);
                std::printf("%-19s %3d ms %7d %6d %6d %16d %6d %9d %8d\n", name, pause, row.copies, row.taken,
                            row.said, row.lostInSilence, row.twice, row.standing, trial.Rejoins() - rejoins);
                std::fflush(stdout);
            }
        }
    } catch (const std::exception& error) {
        std::printf("%s\n", error.what());
        return 1;
    }
    return 0;
}
