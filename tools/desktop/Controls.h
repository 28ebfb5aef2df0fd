#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <string_view>
#include <vector>

#include "desktop/Window.h"

// What another program's controls show. Everything is read anew at each question.

struct TreeLine {
    int depth = 0;
    std::wstring text;
    int image = 0;
    bool expanded = false;
    bool selected = false;
    HTREEITEM item = nullptr;
};

class TreeControl {
 public:
    explicit TreeControl(Window window) : window_(window) {}
    Window window() const { return window_; }

    // The items that exist, in the order of the screen. Those below an item that was never opened may not
    // exist yet; `ExpandAll` makes them.
    std::vector<TreeLine> Lines() const;
    void ExpandAll() const;
    // One line an item: two blanks a level, the text, its picture in brackets, "open", "selected" when
    // wanted.
    std::wstring Outline(bool withSelection = true) const;

    // Selects, or opens and closes, the item with this path, its texts joined with "\". Opens what leads
    // there.
    void Select(std::wstring_view path) const;
    void Select(HTREEITEM item) const;
    void Expand(std::wstring_view path, bool open = true) const;
    std::wstring SelectedPath() const;
    // Null when nothing is.
    HTREEITEM Selected() const { return Next(nullptr, TVGN_CARET); }
    TreeLine Line(HTREEITEM item) const;
    // In pixels of the screen: the middle of the item's text, after scrolling it into view.
    POINT PlaceOf(std::wstring_view path) const;

 private:
    TreeLine LineOf(HTREEITEM item, int depth) const;
    std::vector<TreeLine> LinesAtOnce() const;
    HTREEITEM Find(std::wstring_view path) const;
    HTREEITEM Next(HTREEITEM item, WPARAM relation) const;

    Window window_;
};

class ListControl {
 public:
    explicit ListControl(Window window) : window_(window) {}
    Window window() const { return window_; }

    int Count() const;
    // The texts of one row in all columns; outside of the details there may be only one column.
    std::vector<std::wstring> Row(int index) const;
    int Image(int index) const;
    std::vector<std::wstring> Headings() const;
    // LV_VIEW_ICON, LV_VIEW_SMALLICON, LV_VIEW_LIST or LV_VIEW_DETAILS.
    int Mode() const;
    // One line a row: its picture in brackets, then the texts with " | " between them.
    std::wstring Outline() const;
    // The texts of the first column.
    std::vector<std::wstring> Names() const;
    POINT PlaceOf(int index) const;

 private:
    Window window_;
};

class ToolBarControl {
 public:
    explicit ToolBarControl(Window window) : window_(window) {}

    // Of all buttons but the gaps.
    std::vector<std::wstring> Texts() const;
    bool Enabled(int button) const;
    bool Pressed(int button) const;
    // Clicks the middle of the button, as a hand would. Posted.
    void Click(int button) const;
    POINT PlaceOf(int button) const;

 private:
    // The middle of the button in pixels of the bar.
    POINT Middle(int button) const;
    Window window_;
};

class StatusBarControl {
 public:
    explicit StatusBarControl(Window window) : window_(window) {}
    Window window() const { return window_; }
    std::vector<std::wstring> Panels() const;
    // The panels that are not empty, with " | " between them.
    std::wstring Text() const;

 private:
    Window window_;
};

class TabControl {
 public:
    explicit TabControl(Window window) : window_(window) {}
    std::vector<std::wstring> Names() const;
    int Selected() const;
    // Goes to a tab as a click does, the change told to the owner.
    void Select(int tab) const;

 private:
    Window window_;
};

// The lines of a list box or of a combo box's list.
std::vector<std::wstring> ListBoxLines(Window listBox);
std::vector<std::wstring> ComboBoxLines(Window comboBox);

// The key of a picture in the program's trees and lists: "Profile", "Clip", "Camera" ...
std::wstring PictureKey(int image);
