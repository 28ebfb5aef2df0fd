#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "engine/views/ListUpdate.h"
#include "windows/controls/SystemFont.h"
#include "windows/controls/Timer.h"
#include "windows/controls/TreePane.h"
#include "windows/main/ListPane.h"
#include "windows/main/MainToolBar.h"
#include "windows/main/PreviewPane.h"
#include "windows/main/SearchField.h"
#include "windows/main/Splitter.h"

// The main window's child windows: what each looks like at a resolution, where it stands, and what the list,
// the label above it, the preview and the status bar show of the open node.
class MainPanes {
 public:
    explicit MainPanes(NodeCollection& nodes) : tvTreeView(nodes) {}

    // False when one of them cannot be made.
    bool Create(HWND parent);
    // Fonts and pictures for a resolution in dots per inch.
    void SetDpi(UINT dpi);
    UINT Dpi() const { return dpi_; }

    // Lays out all of them for the splitter's left edge, in twips, or for the one it has.
    void SizeControls(double splitterLeft);
    void LayOut() { SizeControls(splitterLeft_); }
    // Lays them out anew if the window has another size than last time; before the first time it is too
    // early.
    void FitToWindow();
    double SplitterLeft() const { return splitterLeft_; }

    bool ToolBarShown() const { return toolBarShown_; }
    bool StatusBarShown() const { return statusBarShown_; }
    bool PreviewShown() const { return previewShown_; }
    bool Stretched() const { return stretched_; }
    void ToggleToolBar();
    void ToggleStatusBar();
    void TogglePreview();
    void ToggleStretch();

    // The view of the last run, before the first layout, and for the next one.
    void RestoreView();
    void StoreView();

    // The bar between tree and list, which the arrow keys move.
    HWND SplitterWindow() const { return imgSplitter_.Window(); }

    // The order of the list, of what it shows from now on.
    const ListOrder& Order() const { return order_; }
    void SetOrder(const ListOrder& order) { order_ = order; }

    void ClearContent();
    // Shows what belongs to the open node; `containerTitle` stands above an empty list without a title.
    void ShowContent(ListContent content, const std::wstring& containerTitle);
    const ListContent& Content() const { return content_; }
    // More rows at the end of the list, or more in those that it has, from `firstChanged` on; the chosen one
    // stays chosen, and nothing scrolls.
    void GrowContent(const std::vector<ListEntry>& more, int firstChanged);
    void ShowTitle(const std::wstring& title);
    // False for another control's drawing.
    bool DrawTitle(const DRAWITEMSTRUCT& item) const;
    // In the status bar, soon: when the program is done with what it does, or while that goes on for long.
    void ShowStatus(const std::wstring& text);
    // What it is to show, at once.
    void DrawStatus();

    TreePane tvTreeView;
    ListPane lvListView;
    MainToolBar tbToolBar;
    PreviewPane preview;
    SearchField tbFilter;

 private:
    HWND parent_ = nullptr;
    HWND sbStatusBar_ = nullptr;
    HWND lblTitle_ = nullptr;
    Splitter imgSplitter_;
    UniqueFont font_;
    UniqueFont titleFont_;
    UniqueImageList treePictures_;
    UINT dpi_ = 96;
    ListContent content_;
    ListOrder order_;
    std::wstring status_;  // what the status bar is to show
    std::wstring drawnStatus_;
    // Since when a text is not drawn, in milliseconds of the system's clock.
    std::optional<ULONGLONG> statusWaits_;
    Timer statusTimer_{[this] { DrawStatus(); }};
    std::wstring title_;          // what stands above the list
    double splitterLeft_ = 4200;  // twips
    SIZE laidOut_{};              // the window's inside when it was, pixels; nothing before
    bool toolBarShown_ = true;
    bool statusBarShown_ = true;
    bool previewShown_ = true;
    bool stretched_ = false;
};
