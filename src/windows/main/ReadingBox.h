#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "engine/search/WordSearch.h"
#include "platform/Busy.h"
#include "windows/controls/Subclass.h"
#include "windows/controls/Timer.h"

// A box of the preview that reads a text as it is scrolled through: a page beyond what is seen, and
// everything that is ever shown only when the whole is selected or its end is gone to. It reads from a
// message of its own, as what was put off, and never under a hand that selects or scrolls in it.
class ReadingBox {
 public:
    ReadingBox() = default;
    virtual ~ReadingBox() = default;
    ReadingBox(const ReadingBox&) = delete;
    ReadingBox& operator=(const ReadingBox&) = delete;

    HWND Window() const { return box_; }
    bool IsFilled() const { return filled_; }
    // Empties the box and forgets the rest.
    void Empty();
    // Called whenever it has read more.
    void WhenGrown(std::function<void()> grown) { grown_ = std::move(grown); }
    // Reads on whatever is seen, until it is told not to.
    void ReadOn(bool readsOn);
    // True while there is more to be read; all of that at once.
    virtual bool HasMore() const = 0;
    void ReadAll();

    // What is there of the text, with one character for each that a search counts.
    virtual std::wstring Text() const = 0;
    // A place in it, chosen and brought into sight; and the end of what is chosen.
    virtual void Choose(TextPlace place) = 0;
    virtual std::size_t EndOfChosen() const = 0;
    // Takes the mouse from a hand that selects or scrolls in the box.
    void EndHold();

 protected:
    void Attach(HWND box);
    // The box holds the beginning of a text.
    void Filled();
    virtual void ReadMore() = 0;
    virtual void ReadRest() = 0;
    virtual void ForgetRest() = 0;
    // What the box itself does about a message; the result when it goes no further.
    virtual std::optional<LRESULT> OnOwnMessage(UINT message, WPARAM wParam) = 0;

 private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void LookAtHand();
    void Look();
    bool IsNearEnd() const;

    HWND box_ = nullptr;
    std::function<void()> grown_;
    std::optional<BusyScope> held_;  // while the mouse is held in it
    bool filled_ = false;
    bool readsOn_ = false;
    Subclass messages_;
    Timer look_{[this] { Look(); }};
};

inline constexpr DWORD kPreviewTextStyle = WS_CLIPSIBLINGS | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                                           ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL;
// A child window that the preview is made of; null when the system refuses.
HWND MakePreviewChild(HWND parent, DWORD exStyle, const wchar_t* name, DWORD style, int control);
// A tab does not know what stands in it: the box belongs above it on the screen, and so before it in the
// order of windows, together with its name.
void PutOverTab(HWND box, const wchar_t* name);
