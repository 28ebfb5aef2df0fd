#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>

// Tells more about the cell of a list on which the mouse rests, unless the user turned tool tips off. Must
// outlive the list.
class ListTips {
 public:
    // What to tell of a cell, counted from 0; empty for nothing.
    using Text = std::function<std::wstring(int row, int column)>;

    void Attach(HWND list, Text text);

 private:
    static LRESULT CALLBACK Watch(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                  DWORD_PTR self);
    void MouseMoved(HWND list, LPARAM place);

    HWND tip_ = nullptr;
    Text text_;
    std::pair<int, int> cell_{-1, -1};
    std::wstring shown_;
};
