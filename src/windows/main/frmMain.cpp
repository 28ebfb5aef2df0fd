#include "windows/main/frmMain.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <utility>
#include <vector>

#include "engine/clipboard/modClipboard.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "engine/views/MainLayout.h"
#include "platform/Busy.h"
#include "platform/Guard.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/win32/ModalWindows.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"
#include "windows/controls/Boxes.h"
#include "windows/controls/Dialog.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/WindowObject.h"
#include "windows/main/MainPlace.h"

namespace {

constexpr UINT kSearchNews = WM_APP + 2;

// Whether a child is to be seen as soon as its window is.
bool IsShownInside(HWND window, HWND child) {
    for (; IsChild(window, child); child = GetParent(child))
        if ((GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) == 0) return false;
    return child == window;
}

}  // namespace

frmMain::frmMain(Win32User& user) : user_(user) {
    cTV.Bind(&nodes_);
    panes_.tvTreeView.SetListener(this);
    container_.SetListener([this] { ShowContainer(); });
}

frmMain::~frmMain() {
    panes_.tvTreeView.Detach();
}

bool frmMain::Load() {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW shape{};
    shape.cbSize = sizeof shape;
    shape.lpfnWndProc = &frmMain::Procedure;
    shape.hInstance = instance;
    shape.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    shape.hIcon = LoadProgramIcon(GetSystemMetrics(SM_CXICON)).Release();  // the class keeps it to its end
    shape.hIconSm = LoadProgramIcon(GetSystemMetrics(SM_CXSMICON)).Release();
    shape.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    shape.lpszMenuName = MAKEINTRESOURCEW(IDM_frmMain);
    shape.lpszClassName = kMainWindowClass;
    RegisterClassExW(&shape);

    // The title comes with the load: a second instance must not find a window that is not ready.
    window_ =
        CreateWindowExW(WS_EX_CONTROLPARENT, kMainWindowClass, L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                        CW_USEDEFAULT, 0, CW_USEDEFAULT, 0, nullptr, nullptr, instance, this);
    if (window_ == nullptr) {
        // What had been made of it has asked to end the program; the message about it must still be seen.
        MSG quit;
        PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
        return false;
    }
    later_.SetWindow(window_);
    user_.SetMainWindow(EngineWindow(window_));
    user_.SetStatusLine([this](const std::wstring& text) { panes_.ShowStatus(text); });
    user_.SetTeller([this](const std::wstring& text) { notice_.Add(text); });
    keys_ = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDA_frmMain));
    Form_Load();
    // The tree would select it with the focus, and the list be filled before the user's eyes.
    if (nodes_.Selected() == nullptr) nodes_.Select(nodes_.Root());
    loaded_ = true;
    UpdateListview();
    return true;
}

LRESULT CALLBACK frmMain::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const form = ObjectOf<frmMain>(window, message, lParam);
    if (form == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    form->window_ = window;
    // What fails while the window is made must not leave half a window.
    const LRESULT failed = message == WM_CREATE ? -1 : 0;
    const LRESULT result = Guarded<LRESULT>(failed, [&] { return form->Handle(message, wParam, lParam); });
    // Whatever fails on the way, the program ends with its window.
    if (message == WM_DESTROY) PostQuitMessage(0);
    return result;
}

LRESULT frmMain::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            return CreateControls() ? 0 : -1;
        case WM_SIZE:
            Form_Resize(wParam);
            StorePlacesSoon();
            return 0;
        case WM_MOVE:
            StorePlacesSoon();
            return 0;
        case WM_GETMINMAXINFO: {
            auto& limits = *reinterpret_cast<MINMAXINFO*>(lParam);
            limits.ptMinTrackSize = {PixelsFromTwips(kMinimumWidthTwips, panes_.Dpi()),
                                     PixelsFromTwips(kMinimumHeightTwips, panes_.Dpi())};
            return 0;
        }
        case WM_DPICHANGED:
            panes_.SetDpi(HIWORD(wParam));
            PlaceWindow(window_, BoxOf(*reinterpret_cast<RECT*>(lParam)));
            panes_.LayOut();
            return 0;
        case WM_SETTINGCHANGE:
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED:
            SystemLookChanged(message, wParam, lParam);
            break;
        case WM_SETCURSOR:
            if (user_.Pointer() != PointerShape::Hourglass) break;
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        case WM_ENABLE:
            // Every modal window disables this one, and still stands when it enables it again.
            ShowCaptureState();
            if (!wParam) return 0;
            // One that ended below its own menu would stay, unseen, until that ends.
            EndMenuLoop();
            quiet_.Start();
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE) lastFocus_ = FocusedPane();
            break;
        case WM_SETFOCUS:
            SetFocus(FocusedPane());
            return 0;
        case WM_SYSCOMMAND:
            // Minimising takes the keyboard before it tells.
            if ((wParam & 0xFFF0) == SC_MINIMIZE) lastFocus_ = FocusedPane();
            if ((wParam & 0xFFF0) != SC_CLOSE || !ClosesToIcon()) break;
            CloseToIcon();
            return 0;
        case WM_COMMAND:
            if (reinterpret_cast<HWND>(lParam) == panes_.tbFilter.Window() && lParam != 0) {
                if (HIWORD(wParam) == EN_CHANGE && loaded_) FilterChanged();
                return 0;
            }
            OnCommand(LOWORD(wParam));
            return 0;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
            if (panes_.DrawTitle(item)) return TRUE;
            if (!panes_.preview.IsTab(item.hwndItem)) break;
            panes_.preview.DrawTab(item);
            return TRUE;
        }
        case WM_CTLCOLORSTATIC:
            if (const HBRUSH brush =
                    panes_.preview.ColourBox(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam)))
                return reinterpret_cast<LRESULT>(brush);
            break;
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
        case WM_CONTEXTMENU:
            ShowContextMenu(reinterpret_cast<HWND>(wParam),
                            {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
            return 0;
        case WM_INITMENUPOPUP:
            RefreshCommands();
            return 0;
        case WM_ENTERMENULOOP:
            if (!menu_) menu_.emplace(Busy::Menu);
            ++menuLoops_;
            return 0;
        case WM_EXITMENULOOP:
            --menuLoops_;
            // The menu's command is posted and must come first. A timer waits until nothing posted is left.
            quiet_.Start();
            return 0;
        case WM_ENTERIDLE:
            // A menu that was still coming up when everything was to end.
            if (end_ && wParam == MSGF_MENU) EndMenuLoop();
            return 0;
        case kSearchNews:
            TakeSearchNews();
            return 0;
        case kLaterMessage:
            later_.NextIsDue();
            return 0;
        case WM_DEVICECHANGE:
            drives_.DeviceChanged(wParam, lParam);
            return TRUE;
        case WM_QUERYENDSESSION:
            return TRUE;
        case WM_ENDSESSION:
            if (wParam) EndSession();
            return 0;
        case WM_CLOSE:
            Close();
            return 0;
        case WM_DESTROY:
            searchWorker_.Stop();
            if (std::exchange(loaded_, false)) Form_Unload();
            user_.SetStatusLine({});
            user_.SetTeller({});
            user_.SetMainWindow(WindowHandle::None);
            cSysTray1.SetInTray(false);
            drag_.Stop();
            panes_.tvTreeView.Detach();
            return 0;
        default:
            if (message == taskBarCreated_ && taskBarCreated_ != 0) OnTaskBarCreated();
            break;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

bool frmMain::CreateControls() {
    if (!panes_.Create(window_)) return false;
    searchWorker_.SetListener(window_, kSearchNews);
    return CreateTray();
}

bool frmMain::CreateTray() {
    constexpr std::int16_t kLeft = 1;
    constexpr std::int16_t kRight = 2;
    cSysTray::Events events;
    events.MouseDblClick = [this](std::int16_t button, std::int32_t) {
        if (button == kLeft) Restore();
    };
    events.MouseUp = [this](std::int16_t button, std::int32_t) {
        if (button == kRight) ShowTrayMenu();
    };
    events.ShownChanged = [this] {
        if (IsIconic(window_)) ShowWindow(window_, IsOnlyInTray() ? SW_HIDE : SW_SHOWMINNOACTIVE);
    };
    if (!cSysTray1.Create(window_, std::move(events))) return false;
    ShowCaptureState();
    taskBarCreated_ = RegisterWindowMessageW(L"TaskbarCreated");
    // The task bar has fewer rights than a program that the administrator started.
    ChangeWindowMessageFilterEx(window_, taskBarCreated_, MSGFLT_ALLOW, nullptr);
    return true;
}

void frmMain::ShowCaptureState() {
    const CaptureState state = CaptureStateOf(Options().AutoSnap, Options().LockEdit, Is(Busy::Dialog));
    if (std::exchange(shownState_, state) == state) return;
    UniqueIcon& icon = trayIcons_[static_cast<std::size_t>(state)];
    if (!icon.IsSet()) icon = LoadTrayIcon(state, SystemMetricForDpi(SM_CXSMICON, DpiOfPrimaryMonitor()));
    cSysTray1.SetTrayIcon(icon.Get());
    cSysTray1.SetTrayTip(TrayTipOf(state));
}

void frmMain::OnTaskBarCreated() {
    const auto before = std::exchange(trayIcons_, {});
    shownState_.reset();
    ShowCaptureState();
    cSysTray1.TaskBarCreated();
}

// Common controls learn of new colours and fonts from their parent only, of a new theme from the system.
void frmMain::SystemLookChanged(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_THEMECHANGED) ForwardToChildren(window_, message, wParam, lParam);
    const bool measures = message == WM_SETTINGCHANGE && wParam == SPI_SETNONCLIENTMETRICS;
    if (message != WM_THEMECHANGED && !measures) return;
    panes_.SetDpi(panes_.Dpi());
    panes_.LayOut();
}

// Without its icon in the notification area a hidden window could not be reached any more.
bool frmMain::IsOnlyInTray() const {
    return Options().ShowInTray && cSysTray1.IsShown();
}

void frmMain::Form_Resize(WPARAM kind) {
    if (kind == SIZE_MINIMIZED) {
        if (IsOnlyInTray()) ShowWindow(window_, SW_HIDE);
        return;
    }
    panes_.FitToWindow();
    panes_.preview.MakeUp();
    TakeKeyboard();
}

// A child of an icon cannot have the keyboard, and when the window is back the system does not offer it
// again.
void frmMain::TakeKeyboard() {
    if (GetActiveWindow() == window_ && !IsIconic(window_) && !IsChild(window_, GetFocus()))
        SetFocus(FocusedPane());
}

LRESULT frmMain::OnNotify(NMHDR& header) {
    // What the keyboard is on decides what is greyed.
    if (header.code == NM_SETFOCUS) {
        lastFocus_ = header.hwndFrom;
        RefreshCommands();
    }
    if (header.hwndFrom == panes_.tvTreeView.Window()) return panes_.tvTreeView.OnNotify(header);
    if (header.hwndFrom == panes_.lvListView.Window()) return OnListNotify(header);
    if (panes_.preview.IsTab(header.hwndFrom) && header.code == TCN_SELCHANGE) panes_.preview.TabChanged();
    if (header.code == TTN_GETDISPINFOW)
        panes_.tbToolBar.OnGetToolTip(reinterpret_cast<NMTTDISPINFOW&>(header));
    return 0;
}

bool frmMain::TranslateKey(MSG& message) {
    if (message.hwnd != window_ && !IsChild(window_, message.hwnd)) return false;
    // While a name is edited in place the keys belong to the edit.
    if (panes_.tvTreeView.IsEditing() || panes_.lvListView.LabelEdit() != nullptr) return false;
    if (panes_.preview.Wants(message)) return false;
    if (TranslateSearchKey(message)) return true;
    if (panes_.tbFilter.Wants(message)) return false;
    if (message.message == WM_KEYDOWN && message.wParam == VK_TAB) {
        const bool back = GetKeyState(VK_SHIFT) < 0;
        SetFocus(GetNextDlgTabItem(window_, GetFocus(), back));
        return true;
    }
    // Elsewhere the key makes the chosen folder the container.
    if (message.message == WM_KEYDOWN && message.wParam == 'A' &&
        message.hwnd == panes_.lvListView.Window() && GetKeyState(VK_CONTROL) < 0 &&
        GetKeyState(VK_SHIFT) >= 0) {
        OnCommand(m_mark_all);
        return true;
    }
    if (message.message == WM_KEYDOWN && message.wParam == VK_F6) {
        GoToNextPane(GetKeyState(VK_SHIFT) < 0);
        return true;
    }
    return TranslateAcceleratorW(window_, keys_, &message) != 0;
}

void frmMain::GoToNextPane(bool back) {
    const std::array all{panes_.tvTreeView.Window(), panes_.SplitterWindow(), panes_.lvListView.Window(),
                         panes_.preview.ChosenBox(), panes_.tbToolBar.Window()};
    std::vector<HWND> shown;
    std::copy_if(all.begin(), all.end(), std::back_inserter(shown), &IsWindowVisible);
    const HWND focus = panes_.preview.IsTab(GetFocus()) ? panes_.preview.ChosenBox() : GetFocus();
    const auto at = std::find(shown.begin(), shown.end(), focus);
    const std::size_t place = at != shown.end() ? static_cast<std::size_t>(at - shown.begin()) : 0;
    const HWND next = shown[(place + (back ? shown.size() - 1 : 1)) % shown.size()];
    if (next == panes_.tbToolBar.Window())
        panes_.tbToolBar.Enter();
    else
        SetFocus(next);
}

HWND frmMain::FocusedPane() const {
    const HWND focus = GetFocus();
    // A name that is edited in place belongs to its pane: the edit does not last.
    for (const HWND pane : {panes_.tvTreeView.Window(), panes_.lvListView.Window()})
        if (IsChild(pane, focus)) return pane;
    if (IsChild(window_, focus)) return focus;
    return IsShownInside(window_, lastFocus_) ? lastFocus_ : panes_.tvTreeView.Window();
}

void frmMain::WhenQuiet() {
    if (menuLoops_ == 0) menu_.reset();
    ShowCaptureState();
    captures_.OfferMissed();
}

void frmMain::UpdateClipBoard() {
    captures_.UpdateClipBoard();
}

void frmMain::RefreshOrTakeMissedCopy() {
    if (!captures_.TakeMissed()) UpdateListview();
}

// A button that was clicked in vain would stay pressed.
void frmMain::ShowSwitches() {
    panes_.tbToolBar.Press(tbbAutoDetect, Options().AutoSnap);
    panes_.tbToolBar.Press(tbbLock, Options().LockEdit);
}

void frmMain::SetOptions() {
    ShowSwitches();
    panes_.tbToolBar.ShowToolTips(Options().ShowTooltips);
    if (loaded_) panes_.tbFilter.ShowTip(Options().ShowTooltips);
    SetTopless(EngineWindow(window_), Options().TopWindow);
    ShowCaptureState();
    cSysTray1.SetInTray(Options().ShowInTray);
    if (loaded_ && !IsOnlyInTray() && !IsWindowVisible(window_)) ShowWindow(window_, SW_SHOWMINIMIZED);
    RefreshCommands();
}

void frmMain::Show() {
    ShowAtFirst(window_, firstState_, Options().StartAsIcon || StartedByWindows);
    UpdateWindow(window_);
}

void frmMain::Restore() {
    ShowWindow(window_, IsIconic(window_) ? SW_RESTORE : SW_SHOW);
    SetForegroundWindow(ModalWindowOver(window_));
    TakeKeyboard();
}

bool frmMain::Begins(Who who) {
    Answer answer = MayBegin(who);
    if (answer == Answer::EndsIt) {
        EndWhatIsOpen();
        // The window may have gone below a box that told of a refused name.
        if (!loaded_) return false;
        answer = MayBegin(who);
    }
    return answer == Answer::Now;
}

void frmMain::EndWhatIsOpen() {
    EndMenuLoop();
    // The command that was to come is the one that asks for this.
    if (menuLoops_ == 0) menu_.reset();
    if (Is(Busy::Drag)) drag_.Cancel();
    panes_.preview.EndHold();
    panes_.tvTreeView.EndEdit();
    EndListEditNow();
}

// What another program sends, as the system does when the session ends, comes while the loop waits for the
// next message; behind one alone does it come to rest.
void frmMain::EndAtRest() {
    end_.emplace(Busy::End);
    if (InSendMessage()) PostMessageW(window_, WM_NULL, 0, 0);
}

bool frmMain::WaitsForAControl() {
    const bool drags = Is(Busy::Drag) && !panes_.tvTreeView.IsHeld();
    if (!end_ && !drags && EndLoopOfAControl(window_)) EndAtRest();
    return end_.has_value();
}

// The code below an open dialog goes on with the window when the dialog closes.
void frmMain::Close() {
    if (WaitsForAControl()) return;
    if (Begins(Who::Closing)) {
        // Whatever fails here, the window closes.
        Succeeds([] { RenderBeforeTheEnd(); });
        DestroyWindow(window_);
    } else if (MayBegin(Who::Closing) == Answer::Refused) {
        Restore();
    } else if (!panes_.tvTreeView.IsEditing() && panes_.lvListView.LabelEdit() == nullptr) {
        // What is under way ends as soon as this has returned. A name that was refused stays in its edit.
        EndAtRest();
    }
}

// The system ends the process when this returns, and perhaps before: nobody answers a box any more.
void frmMain::EndSession() {
    // What the load asks must not be answered by the end of its window.
    if (!loaded_) return EndAtRest();
    user_.Leave();
    StoreEverything();
    if (!Is(Busy::Dialog) && WaitsForAControl()) return;
    if (MayBegin(Who::SessionEnd) == Answer::EndsIt) {
        EndWhatIsOpen();
        if (Is(Busy::Capture)) captures_.Abandon();
    }
    DestroyWindow(window_);
}

// A window that lives in the notification area stays there: minimising would show it on the task bar.
void frmMain::Minimise() {
    if (!IsWindowVisible(window_)) return;
    lastFocus_ = FocusedPane();
    ShowWindow(window_, SW_MINIMIZE);
}

bool frmMain::ClosesToIcon() const {
    return Options().CloseToIcon && Options().AutoSnap && IsWindowEnabled(window_);
}

void frmMain::CloseToIcon() {
    Minimise();
    if (TellsForTheFirstTime(L"CloseToIconTold"))
        cSysTray1.Say(AppName, L"NXClip erfasst weiter. Beenden lässt es sich im Menü dieses Symbols.");
}

void frmMain::BringToFront() {
    Restore();
}

WindowHandle frmMain::Window() {
    return EngineWindow(window_);
}

bool frmMain::LockPressed() {
    return panes_.tbToolBar.Pressed(tbbLock);
}

void frmMain::Later(std::chrono::milliseconds delay, std::function<void()> action) {
    later_.Later(delay, std::move(action));
}

void frmMain::SetProfileChanged(Node& node) {
    ::SetProfileChanged(&node);
}

bool frmMain::SaveAllProfiles() {
    // The container may have more than the user wants now.
    if (Options().AutoSnap && Options().MostClips > 0) keepsNewest_.PutOff();
    return ::SaveAllProfiles(cTV);
}
