#include "windows/main/MainToolBar.h"

#include <algorithm>
#include <array>
#include <vector>

#include "resources/controls.h"
#include "windows/controls/Dpi.h"

namespace {

enum class Kind : BYTE { Push = BTNS_BUTTON, Toggle = BTNS_CHECK, Choice = BTNS_CHECKGROUP };

struct Button {
    int number;
    Kind kind;
    bool gapBefore;
    const wchar_t* text;
};

constexpr std::array<Button, 14> kButtons{{
    {tbbProfil, Kind::Push, false, L"Neues Profil anlegen"},
    {tbbImport, Kind::Push, false, L"Profil importieren"},
    {tbbCopy, Kind::Push, true, L"Clip in die Zwischenablage übernehmen"},
    {tbbDelete, Kind::Push, false, L"Löschen"},
    {tbbProperties, Kind::Push, false, L"Eigenschaften"},
    {tbbViewLarge, Kind::Choice, true, L"Große Symbole"},
    {tbbViewSmall, Kind::Choice, false, L"Kleine Symbole"},
    {tbbViewList, Kind::Choice, false, L"Liste"},
    {tbbViewDetails, Kind::Choice, false, L"Details"},
    {tbbViewPreview, Kind::Toggle, false, L"Vorschau"},
    {tbbViewProperties, Kind::Push, true, L"Optionen"},
    {tbbLock, Kind::Toggle, true, L"Strukturaktionen und Erfassung sperren"},
    {tbbSnap, Kind::Push, false, L"Clip aus der Zwischenablage erfassen"},
    {tbbAutoDetect, Kind::Toggle, false, L"Automatische Erfassung"},
}};

}  // namespace

bool MainToolBar::Create(HWND parent, int control) {
    window_ = CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr,
                              WS_CHILD | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | TBSTYLE_LIST |
                                  TBSTYLE_WRAPABLE | CCS_NODIVIDER | CCS_NOPARENTALIGN | CCS_NORESIZE,
                              0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)),
                              GetModuleHandleW(nullptr), nullptr);
    if (window_ == nullptr) return false;
    SendMessageW(window_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    // A button has a text, which is its name for who has the screen read aloud, and does not show it.
    SendMessageW(window_, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);

    std::vector<TBBUTTON> entries;
    int picture = 0;
    for (const Button& button : kButtons) {
        TBBUTTON entry{};
        entry.fsStyle = BTNS_SEP;
        if (button.gapBefore) entries.push_back(entry);
        entry.iBitmap = picture++;
        entry.idCommand = button.number;
        entry.fsState = TBSTATE_ENABLED;
        entry.fsStyle = static_cast<BYTE>(button.kind);
        entry.iString = reinterpret_cast<INT_PTR>(button.text);
        entries.push_back(entry);
    }
    SendMessageW(window_, TB_ADDBUTTONSW, entries.size(), reinterpret_cast<LPARAM>(entries.data()));
    keys_.Attach(window_, [this](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_KILLFOCUS) MakeHot(kNone);
        return message == WM_KEYDOWN && OnKey(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
    });
    return true;
}

void MainToolBar::SetDpi(UINT dpi) {
    const int side = SystemMetricForDpi(SM_CXSMICON, dpi);
    UniqueImageList pictures = LoadToolBarPictures(side);
    SendMessageW(window_, TB_SETBITMAPSIZE, 0, MAKELPARAM(side, side));
    SendMessageW(window_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures.Get()));
    // Behind the list: each new one sets the size anew. A padding would count for buttons that fit their
    // texts alone.
    SendMessageW(window_, TB_SETBUTTONSIZE, 0, MAKELPARAM(side + Scaled(7, dpi), side + Scaled(6, dpi)));
    pictures_ = std::move(pictures);
}

int MainToolBar::Fit() {
    RECT client;
    GetClientRect(GetParent(window_), &client);
    // The width decides the rows, the rows decide the height.
    SetWindowPos(window_, nullptr, 0, 0, client.right, 1, SWP_NOZORDER | SWP_NOACTIVATE);
    SendMessageW(window_, TB_AUTOSIZE, 0, 0);
    RECT last{};
    const auto count = static_cast<int>(SendMessageW(window_, TB_BUTTONCOUNT, 0, 0));
    SendMessageW(window_, TB_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&last));
    const int height = last.bottom + Scaled(2, DpiOfWindow(window_));
    SetWindowPos(window_, nullptr, 0, 0, client.right, height, SWP_NOZORDER | SWP_NOACTIVATE);
    return height;
}

void MainToolBar::Enable(int button, bool enabled) {
    SendMessageW(window_, TB_ENABLEBUTTON, static_cast<WPARAM>(button), MAKELPARAM(enabled, 0));
}

void MainToolBar::Press(int button, bool pressed) {
    SendMessageW(window_, TB_CHECKBUTTON, static_cast<WPARAM>(button), MAKELPARAM(pressed, 0));
}

bool MainToolBar::Pressed(int button) const {
    return SendMessageW(window_, TB_ISBUTTONCHECKED, static_cast<WPARAM>(button), 0) != 0;
}

void MainToolBar::ShowToolTips(bool shown) {
    SendMessageW(reinterpret_cast<HWND>(SendMessageW(window_, TB_GETTOOLTIPS, 0, 0)), TTM_ACTIVATE, shown, 0);
}

void MainToolBar::OnGetToolTip(NMTTDISPINFOW& info) const {
    const auto wanted = static_cast<int>(info.hdr.idFrom);
    const auto button = std::find_if(kButtons.begin(), kButtons.end(),
                                     [=](const Button& known) { return known.number == wanted; });
    if (button != kButtons.end()) info.lpszText = const_cast<wchar_t*>(button->text);
}

void MainToolBar::Enter() {
    if (GetFocus() != window_) comeFrom_ = GetFocus();
    SetFocus(window_);
    MakeHot(NextUsable(kNone, 1));
}

void MainToolBar::MakeHot(int place) {
    SendMessageW(window_, TB_SETHOTITEM, static_cast<WPARAM>(place), 0);
}

std::optional<TBBUTTON> MainToolBar::UsableButton(int place) const {
    TBBUTTON button{};
    const bool known = place >= 0 && SendMessageW(window_, TB_GETBUTTON, static_cast<WPARAM>(place),
                                                  reinterpret_cast<LPARAM>(&button)) != 0;
    const bool usable = known && (button.fsStyle & BTNS_SEP) == 0 && (button.fsState & TBSTATE_ENABLED) != 0;
    return usable ? std::optional(button) : std::nullopt;
}

int MainToolBar::NextUsable(int place, int step) const {
    const auto count = static_cast<int>(SendMessageW(window_, TB_BUTTONCOUNT, 0, 0));
    int next = place == kNone && step < 0 ? count : place;
    for (int tried = 0; tried < count; ++tried) {
        next = (next + step + count) % count;
        if (UsableButton(next)) return next;
    }
    return kNone;
}

bool MainToolBar::OnKey(WPARAM key) {
    const auto hot = static_cast<int>(SendMessageW(window_, TB_GETHOTITEM, 0, 0));
    switch (key) {
        case VK_LEFT:
        case VK_UP:
            MakeHot(NextUsable(hot, -1));
            return true;
        case VK_RIGHT:
        case VK_DOWN:
            MakeHot(NextUsable(hot, 1));
            return true;
        case VK_HOME:
            MakeHot(NextUsable(kNone, 1));
            return true;
        case VK_END:
            MakeHot(NextUsable(kNone, -1));
            return true;
        case VK_ESCAPE:
            SetFocus(comeFrom_);
            return true;
        case VK_RETURN:
        case VK_SPACE:
            if (const auto button = UsableButton(hot)) PressByKey(*button);
            return true;
        default:
            return false;
    }
}

// A button pressed by keys leaves the focus alone, as the mouse does: what a command is about depends on it.
void MainToolBar::PressByKey(const TBBUTTON& button) {
    SetFocus(comeFrom_);
    if (button.fsStyle & BTNS_CHECK)
        Press(button.idCommand, (button.fsStyle & BTNS_GROUP) != 0 || !Pressed(button.idCommand));
    PostMessageW(GetParent(window_), WM_COMMAND, MAKEWPARAM(button.idCommand, BN_CLICKED),
                 reinterpret_cast<LPARAM>(window_));
}
