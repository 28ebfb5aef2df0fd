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
#include "windows/controls/PictureBox.h"
#include "windows/main/PngWorker.h"
#include "windows/main/PreviewRichTextBox.h"
#include "windows/main/PreviewTextBox.h"

// What a search found in the clip that is shown.
struct PreviewHit {
    SearchQuery query;
    Likeness likeness = Likeness::Marks;
    int record = -1;  // of the clip's file, from 0; -1 for one in its name
    std::size_t begin = 0;
};

// The preview below the list: a tab (tabFormat) with a text box, a rich-text box and a picture box. It shows
// one format of the selected clip, read from the clip's file when its tab is looked at, as far as it is seen,
// and nothing at all while the window is hidden or an icon. Nobody asked for it, so it opens no message box:
// why it shows nothing stands in it (lblPreviewNote).
class PreviewPane {
 public:
    bool Create(HWND parent);
    void SetFont(HFONT font);
    // Places the tab and what stands in it; an empty box hides them.
    void Place(const Box& area);
    // Shows what was put off while nobody could see it.
    void MakeUp();

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
    // Takes the mouse from a hand that selects in a text.
    void EndHold();

 private:
    PreviewTab InFront() const;
    PreviewTab TabOfHit() const;
    std::size_t BeginOfText(const CFormat& format) const;
    // The box of the chosen tab when it shows a text; null otherwise.
    ReadingBox* ShownText();
    void TextGrew();
    void MarkHits();
    // False when there is none in what has been read.
    bool ShowHitFrom(std::size_t place);
    void BringToFront(PreviewTab tab);
    const CFormat* FormatFor(PreviewTab tab) const;
    bool IsSeen() const;
    // Fills the box of the chosen tab and empties the others.
    void Fill();
    // False when it cannot be shown.
    bool ShowIn(PreviewTab tab);
    bool ShowPicture(std::optional<PreviewPicture> picture);
    bool ShowPng(const CFormat& format);
    // A large picture that was decoded beside the program has come, or will not.
    void PngIsReady();
    // None for no note.
    void Note(const std::wstring& text);
    void MakeBoxInFront();
    // The clip has nothing that a tab shows.
    bool IsEmpty(PreviewTab tab) const;
    void MarkEmptyTabs();
    void FitTabs();
    void FitBars();
    void LayOutInside();
    void PlaceNote();

    static constexpr int kTabs = 3;

    HWND tab_ = nullptr;
    HWND note_ = nullptr;
    PreviewTextBox text_;
    PreviewRichTextBox richText_;  // made when it is first looked at, as is the picture's box
    PictureBox picture_;
    PngWorker decoding_;
    std::shared_ptr<CFormats> formats_;
    std::wstring clipFile_;
    std::optional<PreviewHit> hit_;
    bool hitIsDue_ = false;  // what is shown so far did not hold it
    bool markedEmpty_[kTabs] = {};
    PreviewTab wanted_ = PreviewTab::Text;
    bool shown_ = false;
    bool fillIsDue_ = false;  // nobody could see it
    Subclass tabMessages_;
    Timer makesUp_{[this] { MakeUp(); }};
};
