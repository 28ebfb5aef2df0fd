#include "desktop/Peers.h"

#include <algorithm>

#include "desktop/ProgramTest.h"

// Other programs behave badly; this one stays at hand, and no copy is lost in silence.

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

class BadPeers : public ProgramTest {
 protected:
    void StartCapturing() {
        StartWithProfile();
        nxclip_.SetAutoDetect(true);
    }
    std::vector<std::filesystem::path> ClipFiles() const {
        std::vector<std::filesystem::path> files;
        for (const auto& file : std::filesystem::directory_iterator(nxclip_.ProfileDirectory()))
            if (file.path().extension() == L".nxc") files.push_back(file.path());
        return files;
    }
    int ClipsOf(const std::string& bytes) const {
        int count = 0;
        for (const auto& file : ClipFiles()) {
            try {
                const auto records = ReadClipFile(file);
                if (!records.empty() && records.front().bytes == bytes) ++count;
            } catch (const std::runtime_error&) {
                // Being written just now.
            }
        }
        return count;
    }
    void CopyAndWait(const std::string& bytes) {
        PutFormats({{Private(), bytes}});
        WaitFor("the clip of " + bytes, [&] { return ClipsOf(bytes) > 0; });
    }
    static bool Answers(Window window, milliseconds bound = milliseconds(100)) {
        return SendMessageTimeoutW(window.Handle(), WM_NULL, 0, 0, SMTO_NORMAL,
                                   static_cast<UINT>(bound.count()), nullptr) != 0;
    }
    // For longer than the program waits before it joins the chain anew, and then for a viewer that hangs.
    void ExpectAnswersForAWhile() {
        for (const auto end = Clock::now() + milliseconds(5000); Clock::now() < end; Pause())
            ASSERT_TRUE(Answers(nxclip_.Main(), milliseconds(1000)));
    }
    void WaitUntilFirst() {
        WaitFor("the chain to be joined anew",
                [&] { return GetClipboardViewer() == nxclip_.Main().Handle(); });
    }
    static void CloseBoxOf(const Peer& peer) {
        const Window box = WaitFor("the peer's box", [&] {
            const auto windows = TopLevelWindows(peer.Handle().ProcessId());
            return windows.empty() ? Window() : windows.front();
        });
        box.Post(WM_CLOSE);
        Driver::WaitUntilGone(box);
    }
};

TEST_F(BadPeers, HungViewerInFront_HoldsNeitherCopiesNorTheEnd) {
    StartCapturing();
    const Peer front(L"viewer");
    front.Hang();
    WaitFor("the viewer to hang", [&] { return !Answers(front.Handle()); });
    for (const char* bytes : {"eins", "zwei", "drei"})
        CopyAndWait(bytes);
    ExpectAnswersForAWhile();
    EXPECT_NE(GetClipboardViewer(), nxclip_.Main().Handle()) << "each copy would wait for the viewer behind";
    const auto start = Clock::now();
    EXPECT_EQ(nxclip_.Quit(), 0u);
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(5));
}

TEST_F(BadPeers, MuteViewerInFront_LosesNoCopyAndIsOvertaken) {
    StartCapturing();
    const Peer front(L"viewer mute");
    CopyAndWait("eins");
    WaitUntilFirst();
    CopyAndWait("zwei");
    EXPECT_EQ(ClipFiles().size(), 2u) << "joining takes nothing";
    nxclip_.SetAutoDetect(false);
    PutFormats({{Private(), "ungefragt"}});
    nxclip_.Main().Send(WM_NULL);  // told of late, this copy would pass for the next one
    const Peer second(L"viewer mute");
    PutFormats({{Private(), "auch nicht"}});
    nxclip_.SetAutoDetect(true);
    WaitUntilFirst();
    EXPECT_EQ(ClipFiles().size(), 2u);
}

// It takes no note of our leaving, so there is a ring once the chain has been joined anew.
TEST_F(BadPeers, BlindViewerInFront_KeepsNobodyBehindFromHearing) {
    const Peer behind(L"viewer");
    StartCapturing();
    const Peer front(L"viewer blind boxing");
    const int before = behind.Told();
    CopyAndWait("eins");
    WaitUntilFirst();
    CloseBoxOf(front);
    WaitFor("the viewer behind", [&] { return behind.Told() == before + 1; });
    CopyAndWait("zwei");
    CloseBoxOf(front);
    WaitFor("the viewer behind", [&] { return behind.Told() == before + 2; });
    EXPECT_EQ(front.Told(), 2);
    const int leavings = front.ToldOfLeavings();
    behind.Leave();
    WaitFor("word of the leaving", [&] { return front.ToldOfLeavings() > leavings; });
    for (int rounds = 0; rounds < 20; ++rounds)
        nxclip_.Main().Send(WM_NULL);
    EXPECT_EQ(front.ToldOfLeavings(), leavings + 1) << "it went round";
    EXPECT_EQ(ClipFiles().size(), 2u);
}

TEST_F(BadPeers, BoxingViewerBehind_IsWaitedForOnce) {
    const Peer behind(L"viewer boxing");
    StartCapturing();
    CopyAndWait("eins");
    EXPECT_TRUE(Answers(nxclip_.Main(), milliseconds(3000)));
    // The viewer answers questions while its box is open, so each message could wait two seconds for it.
    auto fastest = Clock::duration::max();
    for (const char* bytes : {"zwei", "drei", "vier", "fünf", "sechs"}) {
        const auto start = Clock::now();
        CopyAndWait(bytes);
        fastest = std::min(fastest, Clock::now() - start);
    }
    EXPECT_LT(fastest, milliseconds(1500));
}

// Six formats of five and a half seconds each would keep the clipboard from everybody for half a minute.
TEST_F(BadPeers, SlowOwner_HoldsTheClipboardForABoundedTimeAndOwesTheRest) {
    StartCapturing();
    const Peer owner(L"owner slow");
    owner.Copy(1, 5, 5500);
    const auto bound = std::chrono::seconds(20);
    WaitFor(
        "the clip", [&] { return ClipsOf(std::string("Kopie 1\0", 8)) == 1; }, bound);
    // How many it gives in time depends on the machine.
    WaitFor("what the clip lacks", [&] {
        const std::wstring status = nxclip_.StatusBar().Text();
        return status.starts_with(L"Der Clip ist unvollständig: nicht geliefert wurden NXClip Peer ") &&
               status.find(L"NXClip Peer 5") != std::wstring::npos;
    });
    CopyAndWait("danach");
}

TEST_F(BadPeers, OwnersThatGiveNothing_LeaveNoClipAndHoldNobody) {
    StartCapturing();
    const Peer empty(L"owner empty");
    empty.Copy(1, 3);
    nxclip_.WaitForStatus(L"Kein Format gesichert");
    const Peer dying(L"owner dying");
    dying.Copy(2, 3);
    WaitFor("the owner's end", [&] { return !dying.Handle().Exists(); });
    EXPECT_TRUE(Answers(nxclip_.Main(), milliseconds(2000)));
    WaitFor("no clip to be left", [&] { return ClipFiles().empty(); });
    const Peer changing(L"owner changing");
    changing.Copy(3, 3);
    WaitFor("what it holds in the end", [&] { return ClipsOf(std::string("Kopie 4\0", 8)) == 1; });
}

TEST_F(BadPeers, HungOwner_HoldsNobodyAndIsComeBackTo) {
    StartCapturing();
    Peer owner(L"owner hung");
    const auto expectFree = [&] {
        WaitFor(
            "the program to answer", [&] { return Answers(nxclip_.Main()); }, std::chrono::seconds(5));
        WaitFor(
            "the clipboard to be free", [] { return OpenClipboard(nullptr) && CloseClipboard(); },
            std::chrono::seconds(5));
    };
    owner.Copy(1, 5, 4000);
    expectFree();
    WaitFor("the clip", [&] { return ClipsOf(std::string("Kopie 1\0", 8)) == 1; });
    owner.Copy(2, 5);
    expectFree();
    nxclip_.WaitForStatus(L"Eine Kopie wartet: Das Programm, das kopiert hat, antwortet nicht.");
    CopyAndWait("danach");
    nxclip_.WaitForStatus(L"Eine Kopie ging vorüber");
    EXPECT_EQ(nxclip_.Quit(), 0u);
}

}  // namespace
