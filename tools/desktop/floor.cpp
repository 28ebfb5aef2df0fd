// The floor under what NXClip may cost: a bare program that does the same work with the fewest calls. It has
// a tree, a list, a text box and the bars around them, reads a tree data file whole at its start and makes an
// item for each node; of each text that is copied it writes a file and a few bytes behind the tree data file,
// adds an item, chooses it and shows the text's beginning. It keeps nothing safe, offers no command but the
// one that ends it, and asks nobody anything. `measure` runs it in the program's place (tools/bench --floor);
// NXCLIP_FLOOR says how many clips lie in its tree.

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "resources/controls.h"

namespace {

constexpr std::size_t kShownOfAText = 16 << 10;

HWND mainWindow, tree, list, title, text, status;
HTREEITEM profile;
int clips;

HWND Child(const wchar_t* name, DWORD style, int control, const RECT& place, DWORD exStyle = 0) {
    return CreateWindowExW(exStyle, name, L"", WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, mainWindow,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)), nullptr, nullptr);
}

HTREEITEM AddItem(HTREEITEM parent, HTREEITEM behind, const std::wstring& name) {
    TVINSERTSTRUCTW item{};
    item.hParent = parent;
    item.hInsertAfter = behind;
    item.item.mask = TVIF_TEXT;
    item.item.pszText = const_cast<wchar_t*>(name.c_str());
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

void WriteBytes(const wchar_t* path, DWORD disposition, std::string_view bytes) {
    const HANDLE file =
        CreateFileW(path, FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, disposition, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
}

void ReadTree(const wchar_t* path) {
    const HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    CloseHandle(file);
}

// Items are made in front of one another: behind the last one a control without a pointer to it seeks it.
void FillTree() {
    SendMessageW(tree, WM_SETREDRAW, FALSE, 0);
    profile = AddItem(TVI_ROOT, TVI_FIRST, L"Profil");
    for (int clip = clips; clip > 0; --clip)
        AddItem(profile, TVI_FIRST, L"Ein Clip mit Namen " + std::to_wstring(clip));
    SendMessageW(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(profile));
    SendMessageW(tree, WM_SETREDRAW, TRUE, 0);
}

std::string ReadClipboard() {
    std::string bytes;
    if (!OpenClipboard(mainWindow)) return bytes;
    const HANDLE data = GetClipboardData(CF_TEXT);
    if (const void* const place = data != nullptr ? GlobalLock(data) : nullptr) {
        bytes.assign(static_cast<const char*>(place), GlobalSize(data));
        GlobalUnlock(data);
    }
    CloseClipboard();
    return bytes;
}

void TakeClip() {
    const std::string bytes = ReadClipboard();
    if (bytes.empty()) return;
    const std::wstring name = L"Clip " + std::to_wstring(++clips);
    WriteBytes((L"Profil\\C" + std::to_wstring(clips) + L".nxc").c_str(), CREATE_ALWAYS, bytes);
    WriteBytes(L"Profil\\nxclip.nxp", OPEN_ALWAYS, std::string(100, 'x'));
    const HTREEITEM item = AddItem(profile, TVI_LAST, name);
    SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
    SetWindowTextW(title, name.c_str());
    SendMessageW(list, LVM_SETITEMCOUNT, 1, 0);
    SendMessageW(status, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(L"1 Element(e)"));
    SetWindowTextA(text, bytes.substr(0, std::min(bytes.find('\0'), kShownOfAText)).c_str());
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_CLIPBOARDUPDATE) TakeClip();
    if (message == WM_COMMAND && LOWORD(wParam) == mnuFileClose) DestroyWindow(window);
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

void MakeWindows() {
    WNDCLASSW shape{};
    shape.lpfnWndProc = &Procedure;
    shape.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    shape.lpszClassName = L"NXClipFloor";
    RegisterClassW(&shape);
    mainWindow = CreateWindowExW(0, shape.lpszClassName, L"NXClip", WS_OVERLAPPEDWINDOW, 67, 67, 900, 600,
                                 nullptr, nullptr, nullptr, nullptr);
    Child(TOOLBARCLASSNAMEW, 0, tbToolBar, {0, 0, 892, 24});
    tree =
        Child(WC_TREEVIEWW, TVS_HASLINES | TVS_HASBUTTONS, tvTreeView, {0, 24, 280, 530}, WS_EX_CLIENTEDGE);
    title = Child(L"STATIC", 0, lblTitle, {285, 24, 592, 44});
    list = Child(WC_LISTVIEWW, LVS_REPORT | LVS_OWNERDATA, lvListView, {285, 44, 892, 289}, WS_EX_CLIENTEDGE);
    text = Child(L"EDIT", ES_MULTILINE | ES_READONLY | ES_AUTOHSCROLL | ES_AUTOVSCROLL, tbPreviewText,
                 {285, 310, 892, 530}, WS_EX_CLIENTEDGE);
    status = Child(STATUSCLASSNAMEW, 0, sbStatusBar, {0, 530, 892, 550});
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    InitCommonControls();
    if (const wchar_t* const given = _wgetenv(L"NXCLIP_FLOOR")) clips = _wtoi(given);
    MakeWindows();
    if (clips > 0) ReadTree(L"Profil\\nxclip.nxp");
    FillTree();
    AddClipboardFormatListener(mainWindow);
    ShowWindow(mainWindow, SW_SHOWNORMAL);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
