#include "desktop/Input.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int kDragMoves = 12;
constexpr std::chrono::milliseconds kDragPause{50};

void SendAll(std::vector<INPUT> inputs) {
    const UINT count = static_cast<UINT>(inputs.size());
    if (SendInput(count, inputs.data(), sizeof(INPUT)) != count) {
        throw DriverError("the system does not take keys or mouse, error " + std::to_string(GetLastError()));
    }
}

INPUT KeyInput(WORD key, WORD scan, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = scan;
    input.ki.dwFlags = flags;
    return input;
}

INPUT MouseInput(DWORD flags, POINT at = {}) {
    // The whole screen is 65536 wide and high here; the middle of the pixel is meant.
    const auto scaled = [](LONG position, int size) {
        return static_cast<LONG>((static_cast<long long>(position) * 65536 + 32768) / std::max(size, 1));
    };
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.dx = scaled(at.x, GetSystemMetrics(SM_CXSCREEN));
    input.mi.dy = scaled(at.y, GetSystemMetrics(SM_CYSCREEN));
    return input;
}

void PauseFor(std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end)
        Pause();
}

bool IsExtended(WORD key) {
    return (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_INSERT || key == VK_DELETE || key == VK_APPS;
}

}  // namespace

void BringToFront(Window window) {
    WaitFor("the window to come to the front", [&] {
        if (GetForegroundWindow() == window.Handle()) return true;
        SetForegroundWindow(window.Handle());
        return false;
    });
}

void Type(std::wstring_view text) {
    std::vector<INPUT> inputs;
    for (const wchar_t character : text) {
        inputs.push_back(KeyInput(0, character, KEYEVENTF_UNICODE));
        inputs.push_back(KeyInput(0, character, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP));
    }
    SendAll(std::move(inputs));
}

void PressKeys(std::initializer_list<WORD> keys) {
    std::vector<INPUT> inputs;
    for (const WORD key : keys)
        inputs.push_back(KeyInput(key, 0, IsExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0));
    const std::vector<INPUT> down = inputs;
    for (auto key = down.rbegin(); key != down.rend(); ++key) {
        INPUT up = *key;
        up.ki.dwFlags |= KEYEVENTF_KEYUP;
        inputs.push_back(up);
    }
    SendAll(std::move(inputs));
}

HeldKey::HeldKey(WORD key) : key_(key) {
    SendAll({KeyInput(key, 0, 0)});
}

HeldKey::~HeldKey() {
    SendAll({KeyInput(key_, 0, KEYEVENTF_KEYUP)});
}

void MoveMouse(POINT to) {
    SendAll({MouseInput(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, to)});
}

void MouseButton(bool down) {
    SendAll({MouseInput(down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP)});
}

void RightMouseButton(bool down) {
    SendAll({MouseInput(down ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_RIGHTUP)});
}

void Click(POINT place) {
    MoveMouse(place);
    SendAll({MouseInput(MOUSEEVENTF_LEFTDOWN), MouseInput(MOUSEEVENTF_LEFTUP)});
}

void RightClick(POINT place) {
    MoveMouse(place);
    SendAll({MouseInput(MOUSEEVENTF_RIGHTDOWN), MouseInput(MOUSEEVENTF_RIGHTUP)});
}

void DoubleClick(POINT place) {
    Click(place);
    SendAll({MouseInput(MOUSEEVENTF_LEFTDOWN), MouseInput(MOUSEEVENTF_LEFTUP)});
}

void Drag(POINT from, POINT to, const std::function<void()>& atEnd) {
    MoveMouse(from);
    SendAll({MouseInput(MOUSEEVENTF_LEFTDOWN)});
    PauseFor(kDragPause);
    for (int move = 1; move <= kDragMoves; ++move) {
        MoveMouse(
            {from.x + (to.x - from.x) * move / kDragMoves, from.y + (to.y - from.y) * move / kDragMoves});
        PauseFor(kDragPause);
    }
    if (atEnd) atEnd();
    SendAll({MouseInput(MOUSEEVENTF_LEFTUP)});
}
