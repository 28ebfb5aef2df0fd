// Does to NXClip whatever comes into its head: monkey STEPS [SEED] [peers|ends], or MINUTESm for STEPS. With
// "peers" there are programs that share the clipboard and behave badly; with "ends" mostly what has the mouse
// or a menu goes on while the program is ended.
//
// Commands, keys, menus, clicks, drags, names edited in place, dialogs answered at random, a second start,
// the hot key, windows closed and sessions ended, other fonts and themes, and another program that copies in
// between. The program must answer within two seconds after every step, and whatever time such a program can
// take of it; live until it is ended, then leave nothing behind and return 0; tell of each copy that it does
// not take; and show the tree that lies on the disk, which a new start shows again. A failure prints the way
// that led there; the same seed goes the same way.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdio>
#include <deque>
#include <list>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "desktop/ClipboardData.h"
#include "desktop/Driver.h"
#include "desktop/HostProcess.h"
#include "desktop/Input.h"
#include "desktop/Peers.h"
#include "desktop/ProgramEvents.h"
#include "desktop/Settings.h"
#include "desktop/Utf8.h"
#include "desktop/WholeFile.h"
#include "engine/tree/TreeFile.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr UINT kLongestAnswer = 2000;  // milliseconds
constexpr ULONGLONG kHangs = 60000;    // after so long nobody would believe in an answer any more
constexpr UINT kOneAsking = 100;       // milliseconds
// What other programs can take of the program's time: those that hang are asked whether they still do, and
// a slow owner has ten seconds and one format more.
constexpr UINT kPeersAnswer = 14000;
constexpr std::size_t kMostPeers = 3;
constexpr int kStepsOfAPeer = 40;
constexpr std::size_t kRememberedSteps = 40;

constexpr int kCommands[] = {
    mnuFileNew,       m_importProfil,     mnuFileProperties,  m_edit_insert,     m_copyToClipboard,
    m_edit_newstruct, m_edit_delete,      m_edit_rename,      m_activate,        m_search,
    m_searcg_again,   mnuViewToolbar,     mnuViewStatusBar,   mnuListViewLarge,  mnuListViewSmall,
    mnuListViewList,  mnuListViewDetails, mnuListViewPreview, m_stretchmode,     mnuViewRefresh,
    mnuViewOptions,   m_extra_fs,         m_ext_act_format,   m_ext_fa,          m_ext_diag,
    m_copy_info,      m_quickstart,       m_reconnect,        m_PP_UnlinkProfil, m_pp_prop,
    m_tray_restore,   m_tray_autosnap,    m_tray_snap,        m_only_text,       m_only_format,
    m_edit_autosnap,  m_edit_lock,        m_undo_delete,      m_move_to,         m_mark_all,
    m_PP_emptyDeleted};
constexpr WORD kKeys[] = {VK_RETURN, VK_ESCAPE, VK_TAB,    VK_SPACE, VK_UP,  VK_DOWN,
                          VK_LEFT,   VK_RIGHT,  VK_DELETE, VK_HOME,  VK_END, VK_F2,
                          VK_F3,     VK_F5,     VK_F6,     VK_APPS,  VK_F10, VK_BACK};
constexpr UINT kLooks[] = {WM_SETTINGCHANGE, WM_SYSCOLORCHANGE, WM_THEMECHANGED};
constexpr WORD kChoosing[] = {VK_DOWN, VK_UP, VK_END};
constexpr const wchar_t* kTexts[] = {L"",     L" ",  L"Affe",        L"Grüße & mehr",
                                     L"C:\\", L"-1", L"99999999999", L"x\\y:z"};

constexpr const wchar_t* kSearched[] = {L"text", L"Text 1", L"typ:bild", L"name:c", L"\"a", L"ä", L" "};

constexpr const wchar_t* kPeers[] = {L"viewer",         L"viewer blind", L"viewer mute",   L"viewer boxing",
                                     L"viewer reading", L"owner",        L"owner slow",    L"owner hung",
                                     L"owner empty",    L"owner dying",  L"owner changing"};

class Monkey {
 public:
    ULONGLONG LongestAnswer() const { return longestAnswer_; }

    Monkey(unsigned seed, std::wstring_view mood)
        : random_(seed), withPeers_(mood == L"peers"), endsOften_(mood == L"ends") {
        // What is deleted is kept on some ways, and the container never grows far on some.
        WriteSetting(L"Settings", L"KeepDeleted", seed % 3 != 0 ? L"1" : L"0");
        WriteSetting(L"Settings", L"MostClips", seed % 2 != 0 ? L"5" : L"0");
        Start();
        nxclip_.MakeProfile(L"Profil");
    }

    void Run(int steps, Clock::time_point end) {
        try {
            for (int i = 0; i < steps && Clock::now() < end; ++i) {
                StepAndAsk();
                ++steps_;
            }
            Compare();
        } catch (const std::exception&) {
            std::printf("the way there, after %d steps:\n", steps_);
            for (const std::string& step : way_)
                std::printf("  %s\n", step.c_str());
            throw;
        }
    }

 private:
    int Random(std::size_t below) { return static_cast<int>(random_() % below); }
    template <class Element, std::size_t Size>
    Element OneOf(const Element (&elements)[Size]) {
        return elements[Random(Size)];
    }
    void Note(const std::string& step) {
        way_.push_back(step);
        if (way_.size() > kRememberedSteps) way_.pop_front();
    }

    void StepAndAsk() {
        LookAtMenus();
        Try([&] { Step(); });
        MustAnswer();
    }
    // What an action is about may go at any time, by what was done before.
    template <typename Action>
    void Try(const Action& action) {
        try {
            action();
        } catch (const DriverError&) {
            Note("what it was about has gone meanwhile");
        }
    }
    void Step() {
        const Window dialog = TopDialog();
        LetPeersGo();
        if (endsOften_ && !dialog) return HoldSomethingOrEnd();
        switch (Random(dialog ? 16 : 20)) {
            case 0:
                return Copy();
            case 1:
                return Random(4) == 0 ? SearchForSomething() : PressAKey();
            case 2:
                return ClickSomewhere();
            case 3:
                return Command();
            case 4:
                return ComeToTheFront();
            case 5:
                return Random(4) == 0 ? End() : EditAName();
            case 6:
                return GoOrComeBack();
            case 7:
                return UseList();
            case 8:
                return UsePeer();
            case 9:
                return dialog ? UsePeer() : CopyInSight();
            default:
                return dialog ? AnswerSomehow(dialog) : Random(3) == 0 ? DragSomething() : Command();
        }
    }

    void HoldSomethingOrEnd() {
        switch (Random(8)) {
            case 0:
                return Copy();
            case 1:
                return PressAKey();
            case 2:
            case 3:
                return ClickSomewhere();
            case 4:
                return End();
            case 5:
                return UseList();
            default:
                return DragSomething();
        }
    }

    // The dialog or message box that waits for the user, if any.
    Window TopDialog() const {
        for (Window window : TopLevelWindows(nxclip_.Program().Id()))
            if (window.ClassName() == L"#32770" && window.Enabled()) return window;
        return {};
    }

    void Copy() {
        Note("another program copies");
        const std::string number = std::to_string(++copies_);
        const std::string more(static_cast<std::size_t>(Random(5000)) + 1, 'm');
        try {
            PutFormats({{CF_TEXT, "Text " + number + '\0'}, {kFormat, more}});
        } catch (const std::runtime_error&) {
            // A viewer that reads waits for an owner that hangs, perhaps for ever.
            if (peers_.empty()) throw;
            Note("the clipboard is open for too long");
        }
    }
    // Programs that share the clipboard come, copy, hang and go.
    void UsePeer() {
        if (!withPeers_) return;
        if (peers_.size() < kMostPeers && Random(2) == 0) {
            const wchar_t* const kind = OneOf(kPeers);
            Note("there is a " + Utf8(kind));
            return void(peers_.emplace_back(kind, steps_ + Random(kStepsOfAPeer)));
        }
        if (peers_.empty()) return;
        const auto peer = std::next(peers_.begin(), Random(peers_.size()));
        if (!peer->program.Handle().Exists()) return void(peers_.erase(peer));
        switch (peer->owns ? 2 : Random(2)) {
            case 0:
                Note("a viewer hangs");
                return peer->program.Hang(Random(2) * 3000);
            case 1:
                Note("a viewer leaves");
                return peer->program.Handle().Post(kPeerLeave);
            default:
                Note("an owner copies");
                peer->program.Handle().Post(kPeerCopy, static_cast<WPARAM>(++copies_),
                                            MAKELPARAM(Random(5), Random(1500)));
        }
    }
    void LetPeersGo() {
        std::erase_if(peers_, [&](const Companion& peer) { return peer.until <= steps_; });
    }
    UINT Patience() {
        if (!peers_.empty()) peersAt_ = GetTickCount64();
        return peersAt_ != 0 && GetTickCount64() - peersAt_ < kPeersAnswer ? kPeersAnswer : kLongestAnswer;
    }

    // A copy while nothing stands in its way becomes a clip, or something is said.
    void CopyInSight() {
        if (!peers_.empty() || !nxclip_.ToolBar().Pressed(tbbAutoDetect) ||
            nxclip_.ToolBar().Pressed(tbbLock))
            return;
        Note("a copy that must be seen");
        const std::wstring before = nxclip_.StatusBar().Text();
        Copy();
        const std::string text = "Text " + std::to_string(copies_) + '\0';
        WaitFor("a copy to be taken or to be told of", [&] {
            MustAnswer();
            return TopDialog() || nxclip_.StatusBar().Text() != before || IsStored(text);
        });
    }
    bool IsStored(const std::string& text) const {
        for (const auto& file : std::filesystem::recursive_directory_iterator(nxclip_.Directory()))
            if (file.path().extension() == L".nxc" &&
                ReadWholeFile(file.path()).find(text) != std::string::npos)
                return true;
        return false;
    }
    void Command() {
        const int command = OneOf(kCommands);
        Note("command " + std::to_string(command));
        nxclip_.Command(command);
    }
    // To the icon, or back by one of the ways.
    void GoOrComeBack() {
        switch (Random(5)) {
            case 0:
                Note("minimise");
                return nxclip_.Main().Post(WM_SYSCOMMAND, SC_MINIMIZE);
            case 1:
                Note("double click on the icon");
                return nxclip_.DoubleClickIcon();
            case 2:
                Note("the task bar's button");
                return nxclip_.Main().Post(WM_SYSCOMMAND, SC_RESTORE);
            case 3:
                return LookDifferent();
            default:
                Note("hot key");
                return PressKeys({VK_CONTROL, VK_MENU, 'L'});
        }
    }
    // What the system tells every window when the user chooses other fonts, colours or another theme.
    void LookDifferent() {
        const UINT message = OneOf(kLooks);
        Note("message " + std::to_string(message));
        for (const Window window : TopLevelWindows(nxclip_.Program().Id()))
            SendNotifyMessageW(window.Handle(), message,
                               message == WM_SETTINGCHANGE ? SPI_SETNONCLIENTMETRICS : 0, 0);
    }
    // A row is chosen and used, opened or renamed, or several go, or all are put in another order.
    void UseList() {
        const int count = nxclip_.List().Count();
        if (count == 0 || !nxclip_.Main().Visible() || nxclip_.Main().Minimised()) return;
        Note("a row of the list");
        Click(nxclip_.List().PlaceOf(Random(static_cast<std::size_t>(count))));
        switch (Random(7)) {
            case 0:
                return PressKeys({VK_RETURN});
            case 1:
                return PressKeys({VK_CONTROL, VK_RETURN});
            case 2:
                return PressKeys({VK_CONTROL, VK_SHIFT, VK_RETURN});
            case 3:
                return UseSeveral();
            case 4:
                return ClickAHeading();
            default:
                PressKeys({VK_F2});
                return Type(OneOf(kTexts));
        }
    }
    void UseSeveral() {
        Note("several rows");
        PressKeys({VK_SHIFT, OneOf(kChoosing)});
        switch (Random(3)) {
            case 0:
                PressKeys({VK_DELETE});
                return Random(2) == 0 ? PressKeys({VK_CONTROL, 'Z'}) : void();
            case 1:
                return PressKeys({VK_CONTROL, VK_SHIFT, 'V'});
            default:
                return Drag(nxclip_.List().PlaceOf(0), nxclip_.Tree().PlaceOf(nxclip_.Tree().SelectedPath()));
        }
    }
    void ClickAHeading() {
        Note("a heading of the list");
        const RECT list = nxclip_.List().window().Rectangle();
        Click({list.left + 20 + Random(300), list.top + 10});
    }
    void PressAKey() {
        const WORD key = OneOf(kKeys);
        Note("key " + std::to_string(key));
        PressKeys({key});
    }
    void SearchForSomething() {
        const std::wstring text = OneOf(kSearched);
        Note("search for \"" + Utf8(text) + '"');
        PressKeys({VK_CONTROL, VK_SHIFT, 'F'});
        Type(text);
        PressKeys({OneOf(kKeys)});
    }
    void ClickSomewhere() {
        const RECT place = nxclip_.Main().Rectangle();
        const POINT point{
            place.left + Random(static_cast<std::size_t>(std::max<LONG>(place.right - place.left, 1))),
            // Below the caption: its buttons end the program.
            place.top + 30 +
                Random(static_cast<std::size_t>(std::max<LONG>(place.bottom - place.top - 30, 1)))};
        const bool right = Random(4) == 0;
        Note((right ? "right click at " : "click at ") + std::to_string(point.x) + "," +
             std::to_string(point.y));
        right ? RightClick(point) : Click(point);
    }
    void DragSomething() {
        const std::vector<TreeLine> lines = nxclip_.Tree().Lines();
        if (lines.size() < 2 || !nxclip_.Main().Visible() || nxclip_.Main().Minimised()) return;
        const RECT tree = nxclip_.Tree().window().Rectangle();
        const auto place = [&] {
            return POINT{tree.left + 40, tree.top + 8 + 16 * Random(std::min<std::size_t>(lines.size(), 12))};
        };
        const bool ends = Random(endsOften_ ? 2 : 6) == 0;
        Note(ends ? "drag in the tree, and meanwhile" : "drag in the tree");
        Drag(place(), place(), [&] {
            if (ends) End();
        });
    }
    void EditAName() {
        const std::wstring name = OneOf(kTexts);
        const bool whole = Random(2) == 0;
        Note("F2 and \"" + Utf8(name) + (whole ? "\" and Enter" : "\""));
        PressKeys({VK_F2});
        Type(name);
        if (whole) PressKeys({VK_RETURN});
    }
    void ComeToTheFront() {
        if (Random(4) != 0) {
            Note("the hot key");
            return PressKeys({VK_CONTROL, VK_MENU, 'L'});
        }
        Note("a second start");
        nxclip_.StartSecond()->WaitForEnd();
    }
    void End() {
        const bool session = Random(2) == 0;
        Note(session ? "the session ends" : "the window is closed");
        if (Ends(session)) StartAgain();
    }
    // A dialog keeps the window from being closed; everything else ends with it.
    bool Ends(bool session) {
        nxclip_.Program().MayEnd();
        // A dialog may be answered before anybody looks: keys come behind what was posted.
        const bool wasInTheWay = !nxclip_.Main().Enabled();
        const int dialogs = events_->Dialogs();
        DWORD_PTR answer = 0;
        if (session)
            SendMessageTimeoutW(nxclip_.Main().Handle(), WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, kLongestAnswer,
                                &answer);
        else
            nxclip_.Main().Close();
        MustCome([&] {
            // A window that is not modal keeps nobody from closing.
            WaitFor("the end or what is in its way", [&] {
                return !nxclip_.Running() ||
                       (!session && nxclip_.Main().Exists() &&
                        (wasInTheWay || !nxclip_.Main().Enabled() || events_->Dialogs() != dialogs));
            });
        });
        wantsToClose_ = nxclip_.Running();
        return !wantsToClose_;
    }
    // What has gone meanwhile is no failure of a step, but this is.
    template <typename Wait>
    static void MustCome(const Wait& wait) {
        try {
            wait();
        } catch (const DriverError& error) {
            throw std::runtime_error(error.what());
        }
    }
    void AnswerSomehow(Window dialog) {
        std::vector<Window> buttons, edits;
        for (Window child : dialog.Descendants()) {
            if (!child.Visible() || !child.Enabled()) continue;
            if (child.ClassName() == L"Button") buttons.push_back(child);
            if (child.ClassName() == L"Edit") edits.push_back(child);
        }
        if (!edits.empty() && Random(2) == 0) {
            const std::wstring text = OneOf(kTexts);
            const Window edit = edits[static_cast<std::size_t>(Random(edits.size()))];
            Note("\"" + Utf8(text) + "\" into " + std::to_string(edit.Number()) + " of \"" +
                 Utf8(dialog.Text()) + "\"");
            PostText(edit, text);
        } else if (!buttons.empty() && Random(5) != 0) {
            const Window button = buttons[static_cast<std::size_t>(Random(buttons.size()))];
            if (button.Number() == cb_help) return;
            Note("press " + std::to_string(button.Number()) + " of \"" + Utf8(dialog.Text()) + "\"");
            button.Post(BM_CLICK);
        } else {
            Note("close \"" + Utf8(dialog.Text()) + "\"");
            dialog.Close();
        }
    }
    static void PostText(Window edit, const std::wstring& text) {
        edit.Post(EM_SETSEL, 0, -1);
        edit.Post(WM_CLEAR);
        for (const wchar_t character : text)
            edit.Post(WM_CHAR, character);
    }

    void MustAnswer() {
        ULONGLONG took = 0;
        std::optional<double> before;
        // What this program owns on the clipboard may be asked for meanwhile.
        for (DWORD_PTR answer = 0; nxclip_.Running(); Pause()) {
            const ULONGLONG asked = GetTickCount64();
            const LRESULT answers =
                SendMessageTimeoutW(nxclip_.Main().Handle(), WM_NULL, 0, 0, SMTO_NORMAL, kOneAsking, &answer);
            // While the whole machine stands still, nobody can answer.
            took += std::min<ULONGLONG>(GetTickCount64() - asked, 2 * kOneAsking);
            if (answers != 0) break;
            if (!before) before = ProcessorTime();
            if (took > kHangs)
                throw std::runtime_error("no answer at all, and of the processor it had " +
                                         std::to_string(ProcessorTime() - *before) + " ms meanwhile");
        }
        if (!nxclip_.Running()) {
            if (!MayHaveEnded())
                throw std::runtime_error("the program has ended, code " +
                                         std::to_string(nxclip_.Program().WaitForEnd()));
            return StartAgain();
        }
        if (took > Patience()) throw std::runtime_error("no answer for " + std::to_string(took) + " ms");
        longestAnswer_ = std::max(longestAnswer_, took);
    }
    double ProcessorTime() const {
        const auto figures = FiguresOnHost(nxclip_.Directory().wstring());
        return figures ? figures->processorTime : 0;
    }
    // A dialog was in the way of an end before, or a key or click has met "Beenden" in an open menu.
    bool MayHaveEnded() {
        return std::exchange(wantsToClose_, false) || endsOften_ || events_->Menus() != menusBefore_ ||
               menuStoodOpen_;
    }
    void StartAgain() {
        if (const DWORD code = nxclip_.Program().WaitForEnd())
            throw std::runtime_error("exit code " + std::to_string(code));
        MustCome([&] { Start(); });
    }
    void Start() {
        nxclip_.Start();
        events_.emplace(nxclip_.Main());
        menus_ = menusBefore_ = 0;
        menuStandsOpen_ = menuStoodOpen_ = false;
    }
    // What was chosen in a menu may be done in the step behind it.
    void LookAtMenus() {
        const auto windows = TopLevelWindows(nxclip_.Program().Id());
        menuStoodOpen_ = std::exchange(
            menuStandsOpen_, std::any_of(windows.begin(), windows.end(),
                                         [](Window window) { return window.ClassName() == L"#32768"; }));
        menuStoodOpen_ = menuStoodOpen_ || menuStandsOpen_;
        menusBefore_ = std::exchange(menus_, events_->Menus());
    }

    // Every menu, dialog and question is closed, and no name is edited: one that is refused would keep the
    // window from closing.
    void ComeToRest() {
        peers_.clear();
        for (int tries = 0; tries < 100; ++tries) {
            PressKeys({VK_ESCAPE});
            MustAnswer();
            const Window dialog = TopDialog();
            nxclip_.Tree().window().Send(TVM_ENDEDITLABELNOW, TRUE);
            nxclip_.List().window().Send(LVM_CANCELEDITLABEL);
            if (!dialog && nxclip_.Main().Enabled()) return;
            if (dialog) Try([&] { dialog.Close(); });
            Pause();
        }
        throw std::runtime_error("a dialog does not close");
    }

    // The profiles that the settings name, as they lie on the disk: a line for each node.
    std::wstring TreeOnDisk() const {
        std::wstring outline;
        const int count = std::stoi(ReadSetting(L"Profiles", L"Count").value_or(L"0"));
        for (int i = 1; i <= count; ++i) {
            const auto directory = ReadSetting(L"Profiles", L"File" + std::to_wstring(i)).value_or(L"");
            const std::string bytes = ReadWholeFile(std::filesystem::path(directory) / L"nxclip.nxp");
            const TreeData data = DecodeTreeData({bytes.begin(), bytes.end()});
            for (std::int32_t node = 1; node <= data.Count; ++node)
                outline += std::wstring(static_cast<std::size_t>(data.Nodes[node].Depth), L' ') +
                           data.Nodes[node].Text + L'\n';
        }
        return outline;
    }
    std::wstring TreeOnScreen() const {
        nxclip_.Tree().ExpandAll();
        std::wstring outline;
        for (const TreeLine& line : nxclip_.Tree().Lines())
            outline += std::wstring(static_cast<std::size_t>(line.depth), L' ') + line.text + L'\n';
        return outline;
    }
    // A name that waited for the last dialog to close may be refused behind it, and the box that says so is
    // in the way once more.
    std::wstring TreeAtTheEnd() {
        for (int tries = 0; tries < 10; ++tries) {
            ComeToRest();
            if (const std::wstring shown = TreeOnScreen(); Ends(false)) return shown;
        }
        throw std::runtime_error("always something is in the way of the end");
    }
    void Compare() {
        const std::wstring shown = TreeAtTheEnd();
        MustBeThis(shown, TreeOnDisk(), "on the disk");
        StartAgain();
        MustBeThis(shown, TreeOnScreen(), "after a new start");
    }
    static void MustBeThis(const std::wstring& shown, const std::wstring& other, const char* where) {
        if (shown != other)
            throw std::runtime_error("the tree was\n" + Utf8(shown) + "and is, " + where + ",\n" +
                                     Utf8(other));
    }

    const UINT kFormat = FormatNumber(L"NXClip Monkey");
    std::mt19937 random_;
    Driver nxclip_;
    std::optional<ProgramEvents> events_;
    std::deque<std::string> way_;
    struct Companion {
        Companion(const wchar_t* kind, int lastStep)
            : program(kind), owns(std::wstring_view(kind).starts_with(L"owner")), until(lastStep) {}
        Peer program;
        bool owns;
        int until;  // the step
    };
    bool withPeers_;
    bool endsOften_;
    std::list<Companion> peers_;
    ULONGLONG peersAt_ = 0;  // when there was one last
    ULONGLONG longestAnswer_ = 0;
    bool wantsToClose_ = false;  // once what was in its way has gone
    // At the beginning of this step, and of the one before it.
    int menus_ = 0, menusBefore_ = 0;
    bool menuStandsOpen_ = false, menuStoodOpen_ = false;
    int copies_ = 0;
    int steps_ = 0;
};

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const std::wstring length = count > 1 ? arguments[1] : L"500";
    const bool minutes = length.ends_with(L'm');
    const auto end =
        minutes ? Clock::now() + std::chrono::minutes(std::stoi(length)) : Clock::time_point::max();
    const unsigned seed = count > 2 ? static_cast<unsigned>(std::stoul(arguments[2])) : GetTickCount();
    std::printf("%ls with the seed %u\n", (minutes ? length : length + L" steps").c_str(), seed);
    std::fflush(stdout);
    try {
        Monkey monkey(seed, count > 3 ? arguments[3] : L"");
        monkey.Run(minutes ? INT_MAX : std::stoi(length), end);
        std::printf("the longest answer took %llu ms\n", monkey.LongestAnswer());
    } catch (const std::exception& error) {
        std::printf("%s\n", error.what());
        return 1;
    }
    std::printf("nothing went wrong\n");
    return 0;
}
