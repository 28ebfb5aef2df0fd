#include "desktop/Driver.h"

#include <algorithm>

#include "desktop/Outline.h"
#include "desktop/Settings.h"
#include "desktop/Utf8.h"

namespace {

constexpr wchar_t kDialogClass[] = L"#32770";
constexpr int kNoticeText = 65535;
constexpr wchar_t kMainTitle[] = L"NXClip";

// An environment that was made outside of Wine names files in the other system's way.
std::filesystem::path WindowsPath(std::wstring text) {
    if (text.starts_with(L"/")) text = L"Z:" + text;
    return std::filesystem::path(text).make_preferred();
}

bool IsNotice(Window window) {
    return window.ClassName() == kDialogClass && GetDlgItem(window.Handle(), kNoticeText) != nullptr;
}

}  // namespace

std::filesystem::path ProgramFile() {
    if (const wchar_t* given = _wgetenv(L"NXCLIP_EXE")) return WindowsPath(given);
    const std::filesystem::path beside = OwnDirectory() / L"NXClip.exe";
    return std::filesystem::exists(beside) ? beside : OwnDirectory().parent_path() / L"NXClip.exe";
}

Driver::Driver(const std::filesystem::path& program) {
    // Places are those of the screen's pixels, as the program's own.
    SetProcessDPIAware();
    std::filesystem::copy_file(program, Directory() / L"NXClip.exe");
    const std::filesystem::path templates = program.parent_path() / L"Templates";
    if (std::filesystem::exists(templates)) {
        std::filesystem::copy(templates, Directory() / L"Templates",
                              std::filesystem::copy_options::recursive);
    }
    ClearSettings();
    WriteSetting(L"Settings", L"ShowSplash", L"0");
    WriteSetting(L"Settings", L"Dialog", L"1");
    WriteSetting(L"Settings", L"EditPropAfterSnap", L"0");
    WriteSetting(L"Settings", L"UnknownFormats", L"255");
}

Driver::~Driver() {
    process_.reset();
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\NXClip");
    RegDeleteKeyValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Run", L"NXClip");
}

void Driver::Launch(const std::wstring& arguments) {
    main_ = {};
    process_.reset();
    process_ = std::make_unique<Process>(L"\"" + (Directory() / L"NXClip.exe").wstring() + L"\"" +
                                             (arguments.empty() ? L"" : L" " + arguments),
                                         Directory().wstring());
}

void Driver::WaitForMain() {
    // The first program of a session brings the system's own ones up with it, which a busy machine takes its
    // time for.
    constexpr std::chrono::seconds kStart(60);
    const auto find = [&] {
        for (Window window : TopLevelWindows(process_->Id())) {
            if (window.ClassName() != kDialogClass && window.FindControl(tvTreeView) &&
                window.Text() == kMainTitle) {
                return window;
            }
        }
        return Window();
    };
    main_ = WaitFor("the main window", find, kStart);
}

void Driver::Start(const std::wstring& arguments) {
    Launch(arguments);
    WaitForMain();
}

DWORD Driver::Quit() {
    process_->MayEnd();
    Command(mnuFileClose);
    const DWORD code = process_->WaitForEnd();
    main_ = {};
    return code;
}

void Driver::Restart() {
    Quit();
    Start();
}

std::unique_ptr<Process> Driver::StartSecond() const {
    auto second = std::make_unique<Process>(L"\"" + (Directory() / L"NXClip.exe").wstring() + L"\"",
                                            Directory().wstring());
    second->MayEnd();
    return second;
}

void Driver::DoubleClickIcon() const {
    constexpr UINT kTrayMessage = 1125;
    // The icon's own window is the child without a number.
    for (Window child : main_.Children())
        if (child.Number() == 0) child.Post(kTrayMessage, 0, WM_LBUTTONDBLCLK);
}

Window Driver::WaitForDialog(std::wstring_view title) const {
    return WaitFor("the dialog \"" + Utf8(title) + "\"", [&] {
        for (Window window : TopLevelWindows(process_->Id())) {
            if (window.ClassName() == kDialogClass && !IsNotice(window) && window.Text() == title)
                return window;
        }
        return Window();
    });
}

void Driver::WaitUntilGone(Window window) {
    WaitFor("a dialog to close", [&] { return !window.Exists() || !window.Visible(); });
}

Notice Driver::WaitForNotice() const {
    const Window found = WaitFor("a message box", [&] {
        for (Window window : TopLevelWindows(process_->Id())) {
            if (IsNotice(window)) return window;
        }
        return Window();
    });
    return {found, found.Text(), found.TextOf(kNoticeText)};
}

void Driver::Answer(const Notice& notice, int button) {
    // The only button of a box with nothing to choose has the number of "cancel" on some systems.
    const bool other = button == IDOK && GetDlgItem(notice.window.Handle(), IDOK) == nullptr;
    notice.window.Press(other ? IDCANCEL : button);
    WaitUntilGone(notice.window);
}

std::wstring Driver::AnswerNotice(int button) const {
    const Notice notice = WaitForNotice();
    Answer(notice, button);
    return notice.text;
}

Window Driver::WaitForPopUpMenu() const {
    return WaitFor("a popped-up menu", [&] {
        for (Window window : TopLevelWindows(process_->Id())) {
            if (window.ClassName() == L"#32768") return window;
        }
        return Window();
    });
}

bool Driver::Quiet() const {
    const std::vector<Window> windows = TopLevelWindows(process_->Id());
    return std::none_of(windows.begin(), windows.end(),
                        [](Window window) { return window.ClassName() == kDialogClass; });
}

void Driver::WaitForStatus(std::wstring_view text) const {
    WaitFor("the status bar to say \"" + Utf8(text) + "\"",
            [&] { return StatusBar().Text().find(text) != std::wstring::npos; });
}

void Driver::WaitForTree(std::wstring_view outline) const {
    WaitFor("the tree\n" + Utf8(outline), [&] {
        const TreeControl tree = Tree();
        tree.ExpandAll();
        return tree.Outline(false) == outline;
    });
}

void Driver::MakeProfile(const std::wstring& name) const {
    std::filesystem::create_directories(ProfileDirectory());
    Command(mnuFileNew);
    const Window dialog = WaitForDialog(L"Neue Profil");
    dialog.SetText(tbName, name);
    dialog.SetText(tbDir, ProfileDirectory().wstring());
    dialog.Press(cb_ok);
    WaitUntilGone(dialog);
    WaitFor("the new profile in the tree", [&] {
        const std::vector<TreeLine> lines = Tree().Lines();
        return std::any_of(lines.begin(), lines.end(),
                           [&](const TreeLine& line) { return line.text == name; });
    });
}

void Driver::SetAutoDetect(bool on) const {
    if (ToolBar().Pressed(tbbAutoDetect) == on) return;
    ToolBar().Click(tbbAutoDetect);
    WaitFor("the automatic capture's button", [&] { return ToolBar().Pressed(tbbAutoDetect) == on; });
}

std::set<HTREEITEM> Driver::Items() const {
    const TreeControl tree = Tree();
    tree.ExpandAll();
    std::set<HTREEITEM> items;
    for (const TreeLine& line : tree.Lines())
        items.insert(line.item);
    return items;
}

TreeLine Driver::WaitForNewClip(const std::set<HTREEITEM>& before, std::chrono::milliseconds bound) const {
    // The clip's item is there before its content is: other programs may be asked for that, and this question
    // is answered meanwhile. It is selected when everything is on disk. Until then no memory of the program
    // is touched: Wine interrupts it for that, and ends it when it is just handing half a megabyte to the
    // window server, as it does for formats that the system makes of others.
    const HTREEITEM item = WaitFor(
        "a new clip in the tree",
        [&] {
            const HTREEITEM selected = Tree().Selected();
            return before.contains(selected) ? nullptr : selected;
        },
        bound);
    return Tree().Line(item);
}

TreeLine Driver::Snap() const {
    const std::set<HTREEITEM> before = Items();
    Command(m_edit_insert);
    return WaitForNewClip(before);
}

void Driver::PutOnClipboard() const {
    // The status bar may still tell of the last time.
    const DWORD before = GetClipboardSequenceNumber();
    Command(m_copyToClipboard);
    WaitFor("the clipboard to change", [&] { return GetClipboardSequenceNumber() != before; });
    WaitForStatus(L"Clipboard erfolgreich gesetzt ...");
}

void Driver::PutOnClipboard(std::wstring_view path) const {
    Tree().Select(path);
    PutOnClipboard();
}
