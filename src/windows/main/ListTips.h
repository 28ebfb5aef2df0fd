#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

// Tells more about the cell of a list on which the mouse rests, unless the user turned tool tips off.
class ListTips {
 public:
    // The tip for a cell, counted from 0; empty for no tip.
    using Text = std::function<std::wstring(int row, int column)>;

    // In front of all messages.
    void SetList(HWND list, Text text);
    // What the list gets; the result is none where the list is to have it too.
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

 private:
    void OnMouse(UINT message, WPARAM wParam, LPARAM place);
    void MakeTip();

    HWND list_ = nullptr;
    HWND tip_ = nullptr;  // made when the mouse first comes
    Text text_;
    std::pair<int, int> cell_{-1, -1};
    std::wstring shown_;
};
