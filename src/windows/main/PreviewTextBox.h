#pragma once

#include "engine/views/BrokenLines.h"
#include "engine/views/PreviewText.h"
#include "windows/main/PreviewMarks.h"
#include "windows/main/ReadingBox.h"

// The preview's box for plain text (tbPreviewText). Lines that are too long for a box are broken in it; what
// is copied out of it has them whole.
class PreviewTextBox : public ReadingBox {
 public:
    bool Create(HWND parent);
    // False when the beginning of the text cannot be read; the box is empty then.
    bool Show(PreviewTextReader text);
    // Shows scroll bars as far as there is something to scroll with them.
    void FitBars();
    // Marks the words of a search; none for no marks.
    void SetWords(std::optional<WordSearch> words) { marks_.SetWords(std::move(words)); }

    bool HasMore() const override { return rest_.HasMore(); }
    std::wstring Text() const override;
    void Choose(TextPlace place) override;
    std::size_t EndOfChosen() const override;

 private:
    struct Selection {
        DWORD from = 0;
        DWORD to = 0;
    };
    Selection Selected() const;
    bool CopyWithoutBreaks() const;
    std::wstring NextPiece();
    void Append(const std::wstring& text);
    void ReadMore() override;
    void ReadRest() override;
    void ForgetRest() override;
    std::optional<LRESULT> OnOwnMessage(UINT message, WPARAM wParam) override;

    PreviewTextReader rest_;
    BrokenLines lines_;
    PreviewMarks marks_;
};
