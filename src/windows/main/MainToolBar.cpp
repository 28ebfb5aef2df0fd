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
    const wchar_t* toolTip;
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
                              WS_CHILD | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS |
                                  TBSTYLE_WRAPABLE | CCS_NODIVIDER | CCS_NOPARENTALIGN | CCS_NORESIZE,
                              0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)),
                              GetModuleHandleW(nullptr), nullptr);
    if (window_ == nullptr) return false;
    SendMessageW(window_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);

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
        entries.push_back(entry);
    }
    SendMessageW(window_, TB_ADDBUTTONSW, entries.size(), reinterpret_cast<LPARAM>(entries.data()));
    return true;
}

void MainToolBar::SetDpi(UINT dpi) {
    const int side = SystemMetricForDpi(SM_CXSMICON, dpi);
    UniqueImageList pictures = LoadToolBarPictures(side);
    SendMessageW(window_, TB_SETBITMAPSIZE, 0, MAKELPARAM(side, side));
    SendMessageW(window_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures.Get()));
    SendMessageW(window_, TB_SETPADDING, 0, MAKELPARAM(Scaled(7, dpi), Scaled(6, dpi)));
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

void MainToolBar::OnGetToolTip(NMTTDISPINFOW& info) const {
    const auto wanted = static_cast<int>(info.hdr.idFrom);
    const auto button = std::find_if(kButtons.begin(), kButtons.end(),
                                     [=](const Button& known) { return known.number == wanted; });
    if (toolTips_ && button != kButtons.end()) info.lpszText = const_cast<wchar_t*>(button->toolTip);
}
