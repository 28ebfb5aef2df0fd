#include "windows/main/ReadingBox.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "engine/process/MayBegin.h"
#include "platform/Platform.h"
#include "windows/controls/Readers.h"

namespace {

constexpr UINT kLookAtHand = WM_APP + 1;
constexpr std::chrono::milliseconds kLookAgainAfter(100);

bool MovesText(UINT message) {
    switch (message) {
        case WM_SIZE:
        case WM_VSCROLL:
        case WM_KEYDOWN:
        case WM_MOUSEWHEEL:
        case EM_SETSEL:
        case EM_SCROLL:
        case EM_LINESCROLL:
        case EM_SCROLLCARET:
            return true;
        default:
            return false;
    }
}

bool IsHeld(int key) {
    return GetKeyState(key) < 0;
}

}  // namespace

HWND MakePreviewChild(HWND parent, DWORD exStyle, const wchar_t* name, DWORD style, int control) {
    return CreateWindowExW(exStyle, name, L"", WS_CHILD | WS_TABSTOP | style, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)), GetModuleHandleW(nullptr),
                           nullptr);
}

void PutOverTab(HWND box, const wchar_t* name) {
    SetWindowPos(box, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    NameByHiddenText(box, name);
}

void ReadingBox::Attach(HWND box) {
    box_ = box;
    messages_.Attach(box, [this](UINT message, WPARAM wParam, LPARAM lParam) {
        return OnMessage(message, wParam, lParam);
    });
}

void ReadingBox::Empty() {
    look_.Stop();
    readsOn_ = false;
    ForgetRest();
    if (std::exchange(filled_, false)) SetWindowTextW(box_, L"");
}

void ReadingBox::Filled() {
    filled_ = true;
    if (HasMore()) look_.Start();
}

void ReadingBox::ReadOn(bool readsOn) {
    readsOn_ = readsOn;
    if (readsOn && HasMore()) look_.Start();
}

void ReadingBox::ReadAll() {
    if (!HasMore()) return;
    const HourglassScope reading(ThePlatform().user);
    ReadRest();
    if (grown_) grown_();
}

std::optional<LRESULT> ReadingBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case kLookAtHand:
            LookAtHand();
            return 0;
        case WM_LBUTTONDOWN:
        case WM_NCLBUTTONDOWN:
            // Whether that takes the mouse shows behind it; a bar's own loop passes messages on.
            PostMessageW(box_, kLookAtHand, 0, 0);
            break;
        case WM_CAPTURECHANGED:
            held_.reset();
            break;
        case WM_CONTEXTMENU: {
            // Its own menu is for the text that it shows now, and holds back what the window's menus do.
            const BusyScope menu(Busy::Menu);
            return messages_.PassOn(message, wParam, lParam);
        }
        case WM_KEYDOWN:
            if (!IsHeld(VK_CONTROL) || IsHeld(VK_MENU)) break;
            if (wParam == VK_END) ReadAll();
            if (wParam != L'A') break;
            SendMessageW(box_, EM_SETSEL, 0, -1);
            return 0;
        case EM_SETSEL:
            if (wParam == 0 && lParam == -1) ReadAll();
            break;
        default:
            break;
    }
    if (MovesText(message) && HasMore()) look_.Start();
    return OnOwnMessage(message, wParam);
}

// Asked again as long as it goes on: not every way out is told.
void ReadingBox::LookAtHand() {
    if (GetCapture() != box_) return held_.reset();
    if (!held_) held_.emplace(Busy::Drag);
    look_.Start(kLookAgainAfter);
}

void ReadingBox::EndHold() {
    if (box_ != nullptr && GetCapture() == box_) ReleaseCapture();
    held_.reset();
}

void ReadingBox::Look() {
    if (held_) LookAtHand();
    if (!HasMore() || held_) return;
    if (MayBegin(Who::PutOffAction) != Answer::Now) {
        look_.Start(kLookAgainAfter);
        return;
    }
    if (!readsOn_ && !IsNearEnd()) return;
    ReadMore();
    if (HasMore()) look_.Start();
    if (grown_) grown_();
}

// A page and more below what is seen. That a line is not lower than this does no harm where it is higher.
bool ReadingBox::IsNearEnd() const {
    constexpr LONG kLowestLine = 8;
    RECT client{};
    GetClientRect(box_, &client);
    const LRESULT seen = SendMessageW(box_, EM_GETFIRSTVISIBLELINE, 0, 0);
    const LRESULT page = std::max(client.bottom / kLowestLine, 1L);
    return seen + 2 * page >= SendMessageW(box_, EM_GETLINECOUNT, 0, 0);
}
