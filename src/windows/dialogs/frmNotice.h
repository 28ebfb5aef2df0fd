#pragma once

#include <deque>
#include <functional>
#include <string>

#include "windows/controls/Dialog.h"

// What the program has to say unasked, one text after the other: in front of all windows, with a sound, and
// without the keyboard, which whoever works there keeps.
class frmNotice : public Dialog {
 public:
    // `next` is called when a text is waiting: ShowNext is to follow.
    explicit frmNotice(std::function<void()> next) : next_(std::move(next)) {}

    // A text that waits or stands there already is not told twice.
    void Add(const std::wstring& text);
    // Shows the first text, unless one is shown.
    void ShowNext(HWND owner);

 private:
    void OnInit() override;
    void OnClosed() override;

    std::function<void()> next_;
    std::deque<std::wstring> texts_;  // the first one is shown while there is a window
};
