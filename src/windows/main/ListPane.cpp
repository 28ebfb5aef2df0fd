#include "windows/main/ListPane.h"

#include <algorithm>

#include "platform/Text.h"
#include "windows/controls/Dpi.h"

namespace {

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

}  // namespace

bool ListPane::Create(HWND parent, int control) {
    window_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
                              WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_OWNERDATA | LVS_SINGLESEL |
                                  LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | LVS_AUTOARRANGE | StyleOf(mode_),
                              0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)),
                              GetModuleHandleW(nullptr), nullptr);
    if (window_ == nullptr) return false;
    ListView_SetExtendedListViewStyle(window_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    SetDpi(DpiOfWindow(parent));
    return true;
}

void ListPane::SetDpi(UINT dpi) {
    dpi_ = dpi;
    UniqueImageList smallPictures = LoadListPictures(SystemMetricForDpi(SM_CXSMICON, dpi));
    UniqueImageList largePictures = LoadListPictures(SystemMetricForDpi(SM_CXICON, dpi));
    ListView_SetImageList(window_, smallPictures.get(), LVSIL_SMALL);
    ListView_SetImageList(window_, largePictures.get(), LVSIL_NORMAL);
    small_ = std::move(smallPictures);
    large_ = std::move(largePictures);
}

void ListPane::SetMode(ListMode mode) {
    mode_ = mode;
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
    SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
    ListView_SetItemCountEx(window_, 0, 0);
    FillColumns();
    ListView_SetItemCountEx(window_, static_cast<int>(content.entries.size()), 0);
    SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window_, nullptr, TRUE);
}

void ListPane::FillColumns() {
    while (ListView_DeleteColumn(window_, 0)) {
    }
    SetStyle(LVS_NOCOLUMNHEADER, content_->columns.empty() ? LVS_NOCOLUMNHEADER : 0);
    int place = 0;
    for (const std::wstring& heading : content_->columns) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        column.pszText = const_cast<wchar_t*>(heading.c_str());
        column.cx = Scaled(place == 0 ? 170 : 120, dpi_);
        column.iSubItem = place;
        SendMessageW(window_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(place++),
                     reinterpret_cast<LPARAM>(&column));
    }
}

int ListPane::FocusedRow() const {
    return ListView_GetNextItem(window_, -1, LVNI_SELECTED);
}

void ListPane::ChooseRow(int row) {
    ListView_SetItemState(window_, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(window_, row, FALSE);
}

POINT ListPane::MenuPoint() const {
    RECT area{};
    if (const int row = FocusedRow(); row >= 0) ListView_GetItemRect(window_, row, &area, LVIR_LABEL);
    POINT point{area.left, area.bottom};
    ClientToScreen(window_, &point);
    return point;
}

int ListPane::RowBeginningWith(const std::wstring& text, int start) const {
    const int count = content_ != nullptr ? static_cast<int>(content_->entries.size()) : 0;
    for (int i = 0; i < count; ++i) {
        const int row = (start + i) % count;
        const std::wstring& name = content_->entries[static_cast<std::size_t>(row)].text;
        if (CompareNoCase(name.substr(0, text.size()), text) == 0) return row;
    }
    return -1;
}

void ListPane::OnGetDisplayInfo(NMLVDISPINFOW& info) const {
    LVITEMW& item = info.item;
    if (content_ == nullptr || item.iItem < 0 || item.iItem >= static_cast<int>(content_->entries.size()))
        return;
    const ListEntry& entry = content_->entries[static_cast<std::size_t>(item.iItem)];
    if (item.mask & LVIF_TEXT) {
        const auto detail = static_cast<std::size_t>(item.iSubItem);
        const std::wstring empty;
        const std::wstring& text = detail == 0                      ? entry.text
                                   : detail <= entry.details.size() ? entry.details[detail - 1]
                                                                    : empty;
        lstrcpynW(item.pszText, text.c_str(), item.cchTextMax);
    }
    if (item.mask & LVIF_IMAGE) item.iImage = ListPictureIndex(entry.icon);
}
