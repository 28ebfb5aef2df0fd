#pragma once

#include <windows.h>

#include <functional>
#include <initializer_list>
#include <string_view>

#include "desktop/Window.h"

// A hand at the keyboard and the mouse: what is done here goes to whatever window is in front, or below the
// pointer. Points are pixels of the screen.

// Brings a window to the front and waits until it is there.
void BringToFront(Window window);

void Type(std::wstring_view text);
// Presses keys together and lets them go in reverse order: {VK_CONTROL, 'C'}.
void PressKeys(std::initializer_list<WORD> keys);
// A key that is down while this lives.
class HeldKey {
 public:
    explicit HeldKey(WORD key);
    ~HeldKey();
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;

 private:
    WORD key_;
};

void MoveMouse(POINT to);
// The left one, where the pointer is.
void MouseButton(bool down);
void RightMouseButton(bool down);
void Click(POINT place);
void RightClick(POINT place);
void DoubleClick(POINT place);

// A drag with the left button in slow steps, as the system's own drag loop needs it. `atEnd` is called before
// the button is let go.
void Drag(POINT from, POINT to, const std::function<void()>& atEnd = {});
