#include "windows/controls/DirectoryList.h"

#include <utility>

#include "engine/views/ChooserRules.h"
#include "platform/Platform.h"
#include "platform/Text.h"
#include "windows/controls/WindowFont.h"

namespace {

// The directory in which a drive was last worked in; its root where the system knows none.
std::wstring CurrentDirectoryOf(const std::wstring& drive) {
    wchar_t directory[MAX_PATH] = L"";
    const DWORD length = GetFullPathNameW(drive.c_str(), MAX_PATH, directory, nullptr);
    return length > 0 && length < MAX_PATH ? directory : drive + L"\\";
}

// A path with its "." and ".." followed; as it is when the system finds it too long.
std::wstring WithoutDots(const std::wstring& path) {
    wchar_t full[MAX_PATH] = L"";
    const DWORD length = GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr);
    return length > 0 && length < MAX_PATH ? full : path;
}

}  // namespace

void DirectoryList::Attach(HWND drives, HWND directories, std::function<void()> changed) {
    drives_ = drives;
    directories_ = directories;
    changed_ = std::move(changed);
    FitLines();
    FillDrives();
}

void DirectoryList::FitLines() {
    const LONG height = WindowFont(directories_).Metrics().tmHeight;
    SendMessageW(directories_, LB_SETITEMHEIGHT, 0, height);
    InvalidateRect(directories_, nullptr, TRUE);
}

void DirectoryList::FillDrives() {
    const DWORD present = GetLogicalDrives();
    for (wchar_t letter = L'a'; letter <= L'z'; ++letter) {
        if (!(present & (1u << (letter - L'a')))) continue;
        const wchar_t drive[] = {letter, L':', 0};
        SendMessageW(drives_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(drive));
    }
}

void DirectoryList::GoTo(const std::wstring& path) {
    if (!TryDirectory(path)) {
        const std::wstring drive = DriveOf(path);
        // The message of the drive rule; a directory that is gone on a good drive leads to that drive's root.
        if (!TryDirectory(drive + L"\\")) TryDirectory(DriveAfterChange(drive, false) + L"\\");
    }
    changed_();
}

bool DirectoryList::TryToGo(const std::wstring& path) {
    if (!TryDirectory(WithoutDots(path))) return false;
    changed_();
    return true;
}

bool DirectoryList::TryDirectory(const std::wstring& directory) {
    std::optional<DirectoryContent> content = ReadDirectory(directory);
    if (!content) return false;
    directory_ = WithoutBackslash(directory);
    content_ = std::move(*content);
    ShowDrive();
    FillDirectories();
    return true;
}

void DirectoryList::ShowDrive() {
    SendMessageW(drives_, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                 reinterpret_cast<LPARAM>(DriveOf(directory_).c_str()));
}

void DirectoryList::FillDirectories() {
    entries_.clear();
    SendMessageW(directories_, WM_SETREDRAW, FALSE, 0);
    SendMessageW(directories_, LB_RESETCONTENT, 0, 0);
    const auto add = [this](const std::wstring& path, std::size_t level, const std::wstring& name) {
        SendMessageW(directories_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
        entries_.push_back({path, level});
    };
    const std::vector<std::wstring> chain = DirectoriesDownTo(directory_);
    for (std::size_t level = 0; level < chain.size(); ++level)
        add(chain[level], level, level == 0 ? chain[level] : LastPartOf(chain[level]));
    for (const std::wstring& name : content_.directories)
        add(JoinDirectory(directory_, name), chain.size(), name);
    SendMessageW(directories_, LB_SETCURSEL, chain.size() - 1, 0);
    SendMessageW(directories_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(directories_, nullptr, TRUE);
}

void DirectoryList::DriveChosen() {
    const auto chosen = static_cast<WPARAM>(SendMessageW(drives_, CB_GETCURSEL, 0, 0));
    wchar_t drive[8] = L"";
    SendMessageW(drives_, CB_GETLBTEXT, chosen, reinterpret_cast<LPARAM>(drive));
    if (drive[0] != 0 && drive != DriveOf(directory_)) GoTo(CurrentDirectoryOf(drive));
}

std::wstring DirectoryList::Selected() const {
    const auto row = static_cast<std::size_t>(SendMessageW(directories_, LB_GETCURSEL, 0, 0));
    return row < entries_.size() ? entries_[row].path : directory_;
}

bool DirectoryList::EntryActivated() {
    const std::wstring chosen = Selected();
    if (chosen == directory_) return false;
    GoTo(chosen);
    return true;
}

LRESULT DirectoryList::KeyPressed(UINT key) {
    constexpr LRESULT kDone = -2;
    constexpr LRESULT kDefault = -1;
    if (key == VK_RIGHT) {
        EntryActivated();
        return kDone;
    }
    if (key == VK_LEFT) {
        const std::vector<std::wstring> chain = DirectoriesDownTo(directory_);
        if (chain.size() > 1) GoTo(chain[chain.size() - 2]);
        return kDone;
    }
    return kDefault;
}

bool DirectoryList::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (message) {
        case WM_VKEYTOITEM:
            if (reinterpret_cast<HWND>(lParam) != directories_) return false;
            result = KeyPressed(LOWORD(wParam));
            return true;
        case WM_CHARTOITEM:
            // Typing goes to the line that begins so.
            if (reinterpret_cast<HWND>(lParam) != directories_) return false;
            result = -1;
            return true;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (item.hwndItem != directories_) return false;
            Draw(item);
            result = TRUE;
            return true;
        }
        default:
            return false;
    }
}

void DirectoryList::Draw(const DRAWITEMSTRUCT& item) const {
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    FillRect(item.hDC, &item.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    // An empty list only has a focus to show.
    if (item.itemID < entries_.size()) {
        const Entry& entry = entries_[item.itemID];
        TEXTMETRICW font{};
        GetTextMetricsW(item.hDC, &font);
        RECT place = item.rcItem;
        place.left += font.tmAveCharWidth / 2 + static_cast<LONG>(entry.level) * 2 * font.tmAveCharWidth;
        const std::wstring name = entry.level == 0 ? entry.path : LastPartOf(entry.path);
        SetTextColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        SetBkMode(item.hDC, TRANSPARENT);
        DrawTextW(item.hDC, name.c_str(), -1, &place,
                  DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
    if ((item.itemState & ODS_FOCUS) != 0 && (item.itemState & ODS_NOFOCUSRECT) == 0)
        DrawFocusRect(item.hDC, &item.rcItem);
}
