#pragma once

#include <windows.h>
// The list control needs <windows.h> in front of it.
#include <commctrl.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "engine/views/ListUpdate.h"
#include "windows/controls/Pictures.h"
#include "windows/controls/Subclass.h"
#include "windows/main/ListTips.h"

// The four ways to show the list.
enum class ListMode { Large, Small, List, Details };

// The list beside the tree. It only shows a ListContent; its rows are asked for when they are drawn. Rows,
// header and scroll bars are drawn in messages of their own, between which the program answers. Must outlive
// its window.
class ListPane {
 public:
    bool Create(HWND parent, int control);
    HWND Window() const { return window_; }

    // For a resolution in dots per inch. The small pictures are the tree's, which must outlive their use.
    void SetDpi(UINT dpi, HIMAGELIST smallPictures);
    void SetMode(ListMode mode);
    ListMode Mode() const { return mode_; }

    // Shows `content`, which must stay as it is until the next call. The columns are as wide as what they
    // show and the window want, or as the user made them for the same headings.
    void ShowContent(const ListContent& content);
    // The shown content has more rows at its end than before, or says more in those that it has, from
    // `firstChanged` on. The columns are as wide as the first rows wanted until it is whole: they would move
    // with each row, and to measure takes longer than to show. The control learns of rows that are not to be
    // seen yet only now and then, since it draws its scroll bars for each growth, and when all are there.
    void ContentGrew(int firstChanged);
    void ContentIsWhole();
    // The first row that is seen, to be seen there again.
    int TopRow() const;
    void ScrollTo(int topRow);
    // Shows at the headings by which column the content is sorted.
    void MarkOrder(const ListOrder& order);
    // Keeps the widths that the user gave the columns for the next run.
    void StoreColumns();
    // The row that is chosen, of several the one under the cursor, or -1.
    int FocusedRow() const;
    // All of them, and how many they are.
    std::vector<int> ChosenRows() const;
    int ChosenCount() const;
    // Chooses a row as a click does.
    void ChooseRow(int row);
    // Chooses several, of which the first gets the cursor.
    void ChooseRows(const std::vector<int>& rows);
    void ChooseAll();
    // Opens the name of a row for editing; what the control tells its parent of it says whether it may be.
    void EditLabel(int row);
    // While a name is being edited, its edit; null else.
    HWND LabelEdit() const;
    // Ends that, and what was typed counts.
    void EndEdit();
    // Where the keyboard's context menu belongs: below the chosen row, in screen pixels.
    POINT MenuPoint() const;

    // The row that typing leads to; -1 for none.
    int OnFindItem(const NMLVFINDITEMW& find) const;
    // Draws what is marked in a cell; the control draws the others.
    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw) const;
    // Fills in what the control asks for while it draws.
    void OnGetDisplayInfo(NMLVDISPINFOW& info) const;

 private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool DrawHeader() const;
    bool IsAtOrigin() const;
    void ShowOtherRows();
    void TellCount();
    void TellCountLater();
    void LoadLargePictures();
    void FillColumns();
    void KeepColumnWidths();
    std::vector<int> WidthsAsKept();
    std::vector<int> FittingWidths() const;
    void InsertColumns(const std::vector<int>& widths);
    void ResizeColumns(const std::vector<int>& widths);
    void SetStyle(DWORD mask, DWORD style);

    HWND window_ = nullptr;
    const ListContent* content_ = nullptr;
    std::vector<std::wstring> headings_;  // those that the control shows
    std::vector<int> fitted_;             // their widths, as they were set last
    int measuredRows_ = 0;                // those that decided about them
    ULONGLONG grewAt_ = 0;                // when the control learned of rows, in the system's milliseconds
    std::map<std::vector<std::wstring>, std::vector<int>> widths_;
    ListTips tips_;
    Subclass messages_;
    UniqueImageList large_;  // loaded when they are first shown
    ListMode mode_ = ListMode::Details;
    UINT dpi_ = 96;
};
