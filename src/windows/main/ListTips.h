#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "windows/controls/Subclass.h"

// Tells more about the cell of a list on which the mouse rests, unless the user turned tool tips off. Must
// outlive the list.
class ListTips {
 public:
    // The tip for a cell, counted from 0; empty for no tip.
    using Text = std::function<std::wstring(int row, int column)>;

    void Attach(HWND list, Text text);

 private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnMouse(UINT message, WPARAM wParam, LPARAM place);
    void MakeTip();

    HWND list_ = nullptr;
    HWND tip_ = nullptr;  // made when the mouse first comes
    Text text_;
    std::pair<int, int> cell_{-1, -1};
    std::wstring shown_;
    Subclass messages_;
};
