#include "windows/main/ListPane.h"

#include <algorithm>
#include <utility>

#include "engine/views/ColumnWidths.h"
#include "engine/views/HitList.h"
#include "engine/views/StoredWindow.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/QuietScope.h"
#include "windows/main/HitLineDrawing.h"

namespace {

// Enough to fill the window; to measure thousands would take longer than to show them.
constexpr int kMeasuredRows = 40;
constexpr ULONGLONG kBetweenGrowths = 500;  // milliseconds
// Posted to the list by itself.
constexpr UINT kTellCount = WM_APP;

DWORD StyleOf(ListMode mode) {
    switch (mode) {
        case ListMode::Large:
            return LVS_ICON;
        case ListMode::Small:
            return LVS_SMALLICON;
        case ListMode::List:
            return LVS_LIST;
        default:
            return LVS_REPORT;
    }
}

// Lists with other columns may begin with the same one.
std::wstring StoredNameOf(const std::vector<std::wstring>& headings) {
    return headings.front() + std::to_wstring(headings.size());
}

}  // namespace

bool ListPane::Create(HWND parent, int control) {
    window_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
                              WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_OWNERDATA | LVS_SHOWSELALWAYS |
                                  LVS_SHAREIMAGELISTS | LVS_AUTOARRANGE | LVS_NOCOLUMNHEADER | StyleOf(mode_),
                              0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)),
                              GetModuleHandleW(nullptr), nullptr);
    if (window_ == nullptr) return false;
    ListView_SetExtendedListViewStyle(window_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    tips_.SetList(window_, [this](int row, int column) {
        return content_ != nullptr ? ListTip(*content_, row, column) : std::wstring();
    });
    messages_.Attach(window_, [this](UINT message, WPARAM wParam, LPARAM lParam) {
        return OnMessage(message, wParam, lParam);
    });
    return true;
}

std::optional<LRESULT> ListPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kTellCount) {
        TellCount();
        return 0;
    }
    // What is left to be drawn is asked for again.
    if (message == WM_PAINT && DrawHeader()) return 0;
    return tips_.OnMessage(message, wParam, lParam);
}

// True when there was anything to draw.
bool ListPane::DrawHeader() const {
    const HWND header = ListView_GetHeader(window_);
    if (header == nullptr || !GetUpdateRect(header, nullptr, FALSE)) return false;
    UpdateWindow(header);
    return !GetUpdateRect(header, nullptr, FALSE);
}

void ListPane::SetDpi(UINT dpi, HIMAGELIST smallPictures) {
    dpi_ = dpi;
    ListView_SetImageList(window_, smallPictures, LVSIL_SMALL);
    if (large_.IsSet()) ListView_SetImageList(window_, nullptr, LVSIL_NORMAL);
    large_.Reset();
    if (mode_ == ListMode::Large) LoadLargePictures();
}

void ListPane::LoadLargePictures() {
    large_ = LoadListPictures(SystemMetricForDpi(SM_CXICON, dpi_));
    ListView_SetImageList(window_, large_.Get(), LVSIL_NORMAL);
}

void ListPane::SetMode(ListMode mode) {
    mode_ = mode;
    if (mode == ListMode::Large && !large_.IsSet()) LoadLargePictures();
    SetStyle(LVS_TYPEMASK, StyleOf(mode));
    InvalidateRect(window_, nullptr, TRUE);
}

void ListPane::SetStyle(DWORD mask, DWORD style) {
    const auto before = static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE));
    const DWORD after = (before & ~mask) | style;
    if (after != before) SetWindowLongPtrW(window_, GWL_STYLE, static_cast<LONG_PTR>(after));
}

void ListPane::ShowContent(const ListContent& content) {
    content_ = &content;
    grewAt_ = GetTickCount64();
    const auto count = static_cast<int>(content.entries.size());
    const bool wasEmpty = ListView_GetItemCount(window_) == 0;
    if (wasEmpty && count == 0 && headings_ == content.columns) return;
    if (!wasEmpty && count > 0 && headings_ == content.columns && IsAtOrigin()) return ShowOtherRows();
    const QuietScope quiet(window_);
    SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
    // The control loses selection and scroll position with its rows.
    if (!wasEmpty) ListView_SetItemCountEx(window_, 0, 0);
    FillColumns();
    if (count > 0) ListView_SetItemCountEx(window_, count, 0);
    SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
}

bool ListPane::IsAtOrigin() const {
    return GetScrollPos(window_, SB_HORZ) == 0 && GetScrollPos(window_, SB_VERT) == 0;
}

// Columns and header stay as they are: a header takes longer to draw than the rows.
void ListPane::ShowOtherRows() {
    if (ChosenCount() > 0) ListView_SetItemState(window_, -1, 0, LVIS_SELECTED);
    const int focused = ListView_GetNextItem(window_, -1, LVNI_FOCUSED);
    if (focused >= 0) ListView_SetItemState(window_, focused, 0, LVIS_FOCUSED);
    SendMessageW(window_, LVM_SETSELECTIONMARK, 0, -1);
    FillColumns();
    TellCountLater();
    RECT rows;
    GetClientRect(window_, &rows);
    if (const HWND header = ListView_GetHeader(window_); header != nullptr && IsWindowVisible(header)) {
        RECT place;
        GetWindowRect(header, &place);
        rows.top += place.bottom - place.top;
    }
    InvalidateRect(window_, &rows, TRUE);
}

void ListPane::ContentGrew(int firstChanged) {
    const auto count = static_cast<int>(content_->entries.size());
    const int before = ListView_GetItemCount(window_);
    if (before == 0) {
        // The columns were measured without a row.
        ShowContent(*content_);
        return;
    }
    const int top = TopRow();
    const int bottom = top + ListView_GetCountPerPage(window_);
    if (before <= bottom || GetTickCount64() - grewAt_ >= kBetweenGrowths) TellCount();
    const int first = std::max(top, firstChanged);
    const int last = std::min(count - 1, bottom);
    if (first <= last) ListView_RedrawItems(window_, first, last);
}

void ListPane::TellCount() {
    const auto count = content_ != nullptr ? static_cast<int>(content_->entries.size()) : 0;
    if (ListView_GetItemCount(window_) == count) return;
    ListView_SetItemCountEx(window_, count, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
    grewAt_ = GetTickCount64();
}

// The control draws its scroll bars for another number of rows, and that takes longer than the rows.
void ListPane::TellCountLater() {
    if (!PostMessageW(window_, kTellCount, 0, 0)) TellCount();
}

void ListPane::ContentIsWhole() {
    TellCount();
    const auto rows = static_cast<int>(content_->entries.size());
    if (std::min(rows, kMeasuredRows) == measuredRows_) return;
    const QuietScope quiet(window_);
    FillColumns();
}

int ListPane::TopRow() const {
    return ListView_GetTopIndex(window_);
}

void ListPane::ScrollTo(int topRow) {
    TellCount();
    const int count = ListView_GetItemCount(window_);
    if (topRow < 0 || topRow >= count) return;
    ListView_EnsureVisible(window_, count - 1, FALSE);
    ListView_EnsureVisible(window_, topRow, FALSE);
}

LRESULT ListPane::OnCustomDraw(NMLVCUSTOMDRAW& draw) const {
    if (content_ == nullptr || content_->hits == nullptr || mode_ != ListMode::Details) return CDRF_DODEFAULT;
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            return CDRF_NOTIFYITEMDRAW;
        case CDDS_ITEMPREPAINT:
            return CDRF_NOTIFYSUBITEMDRAW;
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
            return draw.iSubItem == HitList::kPlaceColumn && DrawHitLine(window_, draw, *content_->hits)
                       ? CDRF_SKIPDEFAULT
                       : CDRF_DODEFAULT;
        default:
            return CDRF_DODEFAULT;
    }
}

void ListPane::FillColumns() {
    // Of a list that is empty for a moment the widths stay.
    if (content_->entries.empty() && headings_ == content_->columns) return;
    KeepColumnWidths();
    measuredRows_ = std::min(static_cast<int>(content_->entries.size()), kMeasuredRows);
    std::vector<int> widths = WidthsAsKept();
    if (widths.empty()) widths = FittingWidths();
    if (headings_ != content_->columns)
        InsertColumns(widths);
    else if (mode_ == ListMode::Details)
        ResizeColumns(widths);
    fitted_ = widths;
}

// Of this run or, before the user changed any, of the last one; empty when there are none.
std::vector<int> ListPane::WidthsAsKept() {
    const std::vector<std::wstring>& headings = content_->columns;
    if (headings.empty()) return {};
    const auto [kept, asked] = widths_.try_emplace(headings);
    if (asked) {
        std::vector<int> stored = ReadColumnWidths(StoredNameOf(headings));
        if (stored.size() != headings.size()) stored.clear();
        for (int& width : stored)
            width = PixelsFromTwips(width, dpi_);
        kept->second = std::move(stored);
    }
    return kept->second;
}

void ListPane::StoreColumns() {
    KeepColumnWidths();
    for (const auto& [headings, widths] : widths_) {
        std::vector<int> twips;
        for (const int width : widths)
            twips.push_back(static_cast<int>(TwipsFromPixels(width, dpi_)));
        if (!twips.empty()) StoreColumnWidths(StoredNameOf(headings), twips);
    }
}

void ListPane::InsertColumns(const std::vector<int>& widths) {
    while (ListView_DeleteColumn(window_, 0)) {
    }
    headings_ = content_->columns;
    SetStyle(LVS_NOCOLUMNHEADER, headings_.empty() ? LVS_NOCOLUMNHEADER : 0);
    for (std::size_t place = 0; place < headings_.size(); ++place) {
        const auto index = static_cast<int>(place);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM | LVCF_FMT;
        column.fmt = IsNumberColumn(*content_, index) ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.pszText = headings_[place].data();
        column.cx = widths[place];
        column.iSubItem = index;
        SendMessageW(window_, LVM_INSERTCOLUMNW, place, reinterpret_cast<LPARAM>(&column));
    }
}

void ListPane::MarkOrder(const ListOrder& order) {
    const HWND header = ListView_GetHeader(window_);
    for (int place = 0; place < static_cast<int>(headings_.size()); ++place) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
        const int before = item.fmt;
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (place == order.column) item.fmt |= order.descending ? HDF_SORTDOWN : HDF_SORTUP;
        if (item.fmt != before)
            SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
    }
}

void ListPane::ResizeColumns(const std::vector<int>& widths) {
    for (std::size_t place = 0; place < widths.size(); ++place)
        if (widths[place] != fitted_[place])
            ListView_SetColumnWidth(window_, static_cast<int>(place), widths[place]);
}

// Only what the user changed is worth being kept; outside of the details a column's width means something
// else.
void ListPane::KeepColumnWidths() {
    if (headings_.empty() || mode_ != ListMode::Details) return;
    std::vector<int> widths;
    for (int place = 0; place < static_cast<int>(headings_.size()); ++place)
        widths.push_back(ListView_GetColumnWidth(window_, place));
    if (widths != fitted_) widths_[headings_] = fitted_ = std::move(widths);
}

std::vector<int> ListPane::FittingWidths() const {
    constexpr int kLeast = 40;
    const int rows = measuredRows_;
    const int margin = Scaled(16, dpi_);
    const int picture = SystemMetricForDpi(SM_CXSMICON, dpi_) + Scaled(4, dpi_);
    std::vector<ColumnWish> wishes;
    for (int place = 0; place < static_cast<int>(content_->columns.size()); ++place) {
        const std::wstring& heading = content_->columns[static_cast<std::size_t>(place)];
        int widest = 0;
        for (int row = 0; row < rows; ++row)
            widest =
                std::max(widest, ListView_GetStringWidth(window_, ListText(*content_, row, place).c_str()));
        const int width = std::max(widest, ListView_GetStringWidth(window_, heading.c_str()));
        wishes.push_back({width + margin + (place == 0 ? picture : 0), widest == 0});
    }
    RECT client;
    GetClientRect(window_, &client);
    return FitColumns(wishes, client.right - SystemMetricForDpi(SM_CXVSCROLL, dpi_), Scaled(kLeast, dpi_));
}

int ListPane::FocusedRow() const {
    const int row = ListView_GetNextItem(window_, -1, LVNI_FOCUSED | LVNI_SELECTED);
    return row >= 0 ? row : ListView_GetNextItem(window_, -1, LVNI_SELECTED);
}

std::vector<int> ListPane::ChosenRows() const {
    std::vector<int> rows;
    // A window that has gone answers 0 without end.
    int last = -1;
    for (int row; (row = ListView_GetNextItem(window_, last, LVNI_SELECTED)) > last; last = row)
        rows.push_back(row);
    return rows;
}

int ListPane::ChosenCount() const {
    return static_cast<int>(ListView_GetSelectedCount(window_));
}

void ListPane::ChooseRow(int row) {
    ChooseRows({row});
}

void ListPane::ChooseRows(const std::vector<int>& rows) {
    if (rows.empty()) return;
    TellCount();
    if (ChosenCount() > 0) ListView_SetItemState(window_, -1, 0, LVIS_SELECTED);
    for (const int row : rows)
        ListView_SetItemState(window_, row, LVIS_SELECTED, LVIS_SELECTED);
    ListView_SetItemState(window_, rows.front(), LVIS_FOCUSED, LVIS_FOCUSED);
    // This row is where a selection with Umschalt begins.
    SendMessageW(window_, LVM_SETSELECTIONMARK, 0, rows.front());
    ListView_EnsureVisible(window_, rows.front(), FALSE);
}

void ListPane::ChooseAll() {
    TellCount();
    ListView_SetItemState(window_, -1, LVIS_SELECTED, LVIS_SELECTED);
}

// Only while it is asked for: a slow second click on a row edits nothing.
void ListPane::EditLabel(int row) {
    ListView_EnsureVisible(window_, row, FALSE);
    SetStyle(LVS_EDITLABELS, LVS_EDITLABELS);
    SendMessageW(window_, LVM_EDITLABELW, static_cast<WPARAM>(row), 0);
    SetStyle(LVS_EDITLABELS, 0);
}

// The control may name one that has gone by itself.
HWND ListPane::LabelEdit() const {
    const HWND edit = ListView_GetEditControl(window_);
    return IsWindow(edit) ? edit : nullptr;
}

void ListPane::EndEdit() {
    if (LabelEdit() == nullptr) return;
    SetFocus(window_);
    // One that never had the keyboard, as in a window that was minimised, does not end by losing it.
    if (LabelEdit() != nullptr) SendMessageW(window_, LVM_CANCELEDITLABEL, 0, 0);
}

POINT ListPane::MenuPoint() const {
    RECT area{};
    if (const int row = FocusedRow(); row >= 0) ListView_GetItemRect(window_, row, &area, LVIR_LABEL);
    POINT point{area.left, area.bottom};
    ClientToScreen(window_, &point);
    return point;
}

int ListPane::OnFindItem(const NMLVFINDITEMW& find) const {
    constexpr UINT kBeginning = LVFI_PARTIAL | 4;  // the second is LVFI_SUBSTRING, which means the same
    const UINT flags = find.lvfi.flags;
    if ((flags & (LVFI_STRING | kBeginning)) == 0 || content_ == nullptr || find.lvfi.psz == nullptr)
        return -1;
    return FindListRow(*content_, find.lvfi.psz, find.iStart, (flags & kBeginning) != 0,
                       (flags & LVFI_WRAP) != 0);
}

void ListPane::OnGetDisplayInfo(NMLVDISPINFOW& info) const {
    LVITEMW& item = info.item;
    if (content_ == nullptr) return;
    if (item.mask & LVIF_TEXT)
        lstrcpynW(item.pszText, ListText(*content_, item.iItem, item.iSubItem).c_str(), item.cchTextMax);
    if (item.mask & LVIF_IMAGE) item.iImage = ListPictureIndex(ListIcon(*content_, item.iItem));
}
