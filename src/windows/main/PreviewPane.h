#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

#include "engine/search/ContentSearch.h"
#include "engine/views/ListUpdate.h"
#include "engine/views/MainLayout.h"
#include "engine/views/PreviewFormats.h"
#include "engine/views/PreviewPicture.h"
#include "engine/views/PreviewText.h"
#include "platform/win32/SystemHandles.h"
#include "windows/controls/PictureBox.h"
#include "windows/main/PreviewMarks.h"

// What a search found in the clip that is shown.
struct PreviewHit {
    SearchQuery query;
    Likeness likeness = Likeness::Marks;
    int record = -1;  // of the clip's file, from 0; -1 for one in its name
    std::size_t begin = 0;
};

// The preview below the list: a tab (tabFormat) with a text box, a rich-text box and a picture box. It shows
// one format of the selected clip, read from the clip's file when its tab is looked at: of a long text what
// fills the box at once, and the rest when the program has nothing else to do.
class PreviewPane {
 public:
    bool Create(HWND parent);
    void SetFont(HFONT font);
    // Places the tab and what stands in it; an empty box hides them.
    void Place(const Box& area);

    // Empties all three boxes.
    void Clear();
    // Shows a format of a clip: that of the tab that the user chose last or, when it has none, of the first
    // that has one. Empties what shows something else.
    void Show(const ListContent& content);
    // The same, with the place of a hit in sight and chosen.
    void Show(const ListContent& content, PreviewHit hit);
    // Chooses the next place of a word that was searched for, behind the last one the first again.
    void ShowNextHit();
    void SetStretch(bool stretch) { picture_.SetStretch(stretch); }

    bool IsTab(HWND window) const { return window == tab_; }
    // Another tab was chosen.
    void TabChanged();
    // Draws a tab's caption.
    void DrawTab(const DRAWITEMSTRUCT& item) const;
    // Sets the colours in which a control is drawn; null for one that is none of the boxes.
    HBRUSH ColourBox(HWND control, HDC dc) const;
    // True for a key that copies, selects or deletes in one of the text boxes, which is no command then.
    bool Wants(const MSG& message) const;
    // The box of the chosen tab, for the focus.
    HWND ChosenBox() const;

 private:
    PreviewTab InFront() const;
    PreviewTab TabOfHit() const;
    std::size_t BeginOfText(const CFormat& format) const;
    void MarkHits();
    void ShowHitFrom(std::size_t place);
    void BringToFront(PreviewTab tab);
    const CFormat* FormatFor(PreviewTab tab) const;
    // Fills the box of the chosen tab and empties the others.
    void Fill();
    // False when there is nothing to show; what goes wrong is told.
    bool ShowText();
    bool ShowRichText();
    bool ShowPicture();
    std::optional<PreviewPicture> OpenPicture(const CFormat& format) const;
    bool StreamRichText(const CFormat& format, std::size_t most);
    void AppendText(const std::wstring& text);
    void ForgetRest();
    void ShowRest();
    void FitBars();
    void MakeBoxInFront();
    void MakeRichTextBox();
    void SetRichTextFont();
    static void PutOverTab(HWND box, const wchar_t* name);
    // The clip has nothing that a tab shows.
    bool IsEmpty(PreviewTab tab) const;
    void MarkEmptyTabs();
    void FitTabs();
    void EmptyText();
    void EmptyRichText();
    void LayOutInside();

    static constexpr int kTabs = 3;

    HWND tab_ = nullptr;
    HWND text_ = nullptr;
    HWND richText_ = nullptr;  // made when it is first looked at, as is the picture's box
    UniqueLibrary richTextLibrary_;
    PictureBox picture_;
    std::shared_ptr<CFormats> formats_;
    std::wstring clipFile_;
    std::optional<PreviewHit> hit_;
    PreviewMarks marks_;
    bool hitIsDue_ = false;  // what is shown so far did not hold it
    PreviewTextReader restOfText_;
    const CFormat* restOfRichText_ = nullptr;
    bool markedEmpty_[kTabs] = {};
    PreviewTab wanted_ = PreviewTab::Text;
    bool shown_ = false;
    bool textFilled_ = false;
    bool richTextFilled_ = false;
    Timer rest_{[this] { ShowRest(); }};  // of the shown text
};
