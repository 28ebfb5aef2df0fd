#include "windows/main/MainPanes.h"

#include <cstdlib>
#include <utility>

#include "engine/views/HitList.h"
#include "engine/views/MainLayout.h"
#include "engine/views/StoredWindow.h"
#include "resources/controls.h"
#include "windows/controls/Boxes.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/Readers.h"

namespace {

constexpr double kSplitterWidthTwips = 75;

}  // namespace

bool MainPanes::Create(HWND parent) {
    parent_ = parent;
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    if (!tbToolBar.Create(parent, ::tbToolBar) || !tvTreeView.Create(parent, ::tvTreeView) ||
        !tbFilter.Create(parent, ::tbFilter))
        return false;
    NameByHiddenText(tvTreeView.Window(), L"Profile und Clips");
    NameByHiddenText(tbFilter.Window(), L"In Namen und Inhalten suchen");
    // Directly before the list, whose name it is.
    lblTitle_ = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_OWNERDRAW | SS_NOPREFIX, 0, 0,
                                0, 0, parent, reinterpret_cast<HMENU>(lblTitle), instance, nullptr);
    if (!lvListView.Create(parent, ::lvListView) || !preview.Create(parent)) return false;
    sbStatusBar_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0,
                                   0, parent, reinterpret_cast<HMENU>(sbStatusBar), instance, nullptr);
    const bool splitter = imgSplitter_.Create(
        parent, imgSplitter, picSplitter,
        [this](int left) {
            RECT client;
            GetClientRect(parent_, &client);
            return PixelsFromTwips(
                ClampSplitter(TwipsFromPixels(left, dpi_), TwipsFromPixels(client.right, dpi_)), dpi_);
        },
        [this](int left) { SizeControls(TwipsFromPixels(left, dpi_)); });
    if (sbStatusBar_ == nullptr || lblTitle_ == nullptr || !splitter) return false;
    SetDpi(DpiOfWindow(parent));
    ShowWindow(tbToolBar.Window(), SW_SHOW);
    return true;
}

void MainPanes::SetDpi(UINT dpi) {
    dpi_ = dpi;
    UniqueFont font = CreateMessageFont(dpi);
    UniqueFont titleFont = CreateMessageFont(dpi, FW_BOLD);
    const LPARAM redraw = MAKELPARAM(IsWindowVisible(parent_), 0);
    for (const HWND control : {tvTreeView.Window(), lvListView.Window(), sbStatusBar_})
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), redraw);
    SendMessageW(lblTitle_, WM_SETFONT, reinterpret_cast<WPARAM>(titleFont.Get()), redraw);
    preview.SetFont(font.Get());
    tbFilter.SetFont(font.Get());
    font_ = std::move(font);
    titleFont_ = std::move(titleFont);

    UniqueImageList pictures = LoadListPictures(SystemMetricForDpi(SM_CXSMICON, dpi));
    TreeView_SetImageList(tvTreeView.Window(), pictures.Get(), TVSIL_NORMAL);
    lvListView.SetDpi(dpi, pictures.Get());
    treePictures_ = std::move(pictures);
    tbToolBar.SetDpi(dpi);
}

void MainPanes::FitToWindow() {
    RECT client;
    GetClientRect(parent_, &client);
    const bool same = client.right == laidOut_.cx && client.bottom == laidOut_.cy;
    if (laidOut_.cx > 0 && !same) LayOut();
}

void MainPanes::SizeControls(double splitterLeft) {
    splitterLeft_ = splitterLeft;
    RECT client;
    GetClientRect(parent_, &client);
    laidOut_ = {client.right, client.bottom};
    LayoutInput input;
    input.width = client.right;
    input.height = client.bottom;
    input.toolBarHeight = toolBarShown_ ? tbToolBar.Fit() : 0;
    if (statusBarShown_) {
        SendMessageW(sbStatusBar_, WM_SIZE, 0, 0);
        RECT bar;
        GetWindowRect(sbStatusBar_, &bar);
        input.statusBarHeight = bar.bottom - bar.top;
    }
    LOGFONTW font{};
    GetObjectW(titleFont_.Get(), sizeof font, &font);
    input.titleHeight = std::abs(font.lfHeight) + Scaled(9, dpi_);
    constexpr int kSearchWidth = 300;
    input.searchWidth = Scaled(kSearchWidth, dpi_);
    input.splitterLeft = PixelsFromTwips(splitterLeft, dpi_);
    input.splitterWidth = PixelsFromTwips(kSplitterWidthTwips, dpi_);
    input.previewShown = previewShown_;

    const LayoutResult layout = LayOutMainWindow(input);
    PlaceWindow(tvTreeView.Window(), layout.tree);
    PlaceWindow(imgSplitter_.Window(), layout.splitter);
    PlaceWindow(lblTitle_, layout.title);
    tbFilter.Place(layout.search);
    PlaceWindow(lvListView.Window(), layout.list);
    preview.Place(layout.formatTab);
}

void MainPanes::ToggleToolBar() {
    toolBarShown_ = !toolBarShown_;
    ShowWindow(tbToolBar.Window(), toolBarShown_ ? SW_SHOW : SW_HIDE);
    LayOut();
}

void MainPanes::ToggleStatusBar() {
    statusBarShown_ = !statusBarShown_;
    ShowWindow(sbStatusBar_, statusBarShown_ ? SW_SHOW : SW_HIDE);
    LayOut();
}

void MainPanes::TogglePreview() {
    previewShown_ = !previewShown_;
    LayOut();
}

void MainPanes::ToggleStretch() {
    stretched_ = !stretched_;
    preview.SetStretch(stretched_);
}

void MainPanes::RestoreView() {
    const StoredView view = ReadView();
    if (view.toolBar != toolBarShown_) ToggleToolBar();
    if (view.statusBar != statusBarShown_) ToggleStatusBar();
    if (view.stretch != stretched_) ToggleStretch();
    previewShown_ = view.preview;
    order_ = {view.sortColumn, view.sortDescending};
    lvListView.SetMode(static_cast<ListMode>(view.listMode));
}

void MainPanes::StoreView() {
    ::StoreView({toolBarShown_, statusBarShown_, previewShown_, stretched_,
                 static_cast<int>(lvListView.Mode()), order_.column, order_.descending});
    lvListView.StoreColumns();
}

void MainPanes::ClearContent() {
    preview.Clear();
    ShowStatus(L"");
}

void MainPanes::ShowContent(ListContent content, const std::wstring& containerTitle) {
    content_ = std::move(content);
    SortEntries(content_, order_);
    ShowTitle(content_.title.empty() ? containerTitle : content_.title);
    lvListView.ShowContent(content_);
    lvListView.MarkOrder(content_.hits != nullptr ? content_.hits->Order()
                         : CanBeSorted(content_)  ? order_
                                                  : ListOrder());
    ShowStatus(content_.status);
    preview.Show(content_);
}

void MainPanes::GrowContent(const std::vector<ListEntry>& more, int firstChanged) {
    content_.entries.insert(content_.entries.end(), more.begin(), more.end());
    lvListView.ContentGrew(firstChanged);
}

void MainPanes::ShowTitle(const std::wstring& title) {
    if (std::exchange(title_, title) != title) SetWindowTextW(lblTitle_, title.c_str());
}

// A static text with an ellipsis in a path ends the program under Wine where there is room for no letter.
bool MainPanes::DrawTitle(const DRAWITEMSTRUCT& item) const {
    if (item.hwndItem != lblTitle_) return false;
    RECT place = item.rcItem;
    FillRect(item.hDC, &place, GetSysColorBrush(COLOR_BTNFACE));
    SelectObject(item.hDC, reinterpret_cast<HFONT>(SendMessageW(lblTitle_, WM_GETFONT, 0, 0)));
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, GetSysColor(COLOR_BTNTEXT));
    DrawTextW(item.hDC, title_.c_str(), -1, &place,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_PATH_ELLIPSIS);
    return true;
}

void MainPanes::ShowStatus(const std::wstring& text) {
    if (text == status_) return;
    // Long work shows its progress without a message loop of its own; of what is over at once only the last
    // text is drawn.
    constexpr ULONGLONG kLongWork = 100;  // milliseconds
    status_ = text;
    if (status_ == drawnStatus_) {
        statusWaits_.reset();
        statusTimer_.Stop();
        return;
    }
    const ULONGLONG now = GetTickCount64();
    if (!statusWaits_) {
        statusWaits_ = now;
        statusTimer_.Start();
    } else if (now - *statusWaits_ >= kLongWork) {
        DrawStatus();
    }
}

void MainPanes::DrawStatus() {
    if (!std::exchange(statusWaits_, std::nullopt)) return;
    statusTimer_.Stop();
    if (status_ == drawnStatus_) return;
    drawnStatus_ = status_;
    SendMessageW(sbStatusBar_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(status_.c_str()));
    UpdateWindow(sbStatusBar_);
}
