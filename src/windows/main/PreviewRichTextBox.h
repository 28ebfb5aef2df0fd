#pragma once

#include <string>

#include "engine/clipboard/CFormat.h"
#include "engine/views/PreviewData.h"
#include "platform/win32/SystemHandles.h"
#include "windows/main/ReadingBox.h"

// The preview's box for rich text (tbPreviewRtf). It refuses every embedded object: a preview runs nothing
// and fetches nothing. Of a long text it takes in four times as much whenever more is to be seen, each time
// from the beginning: no part of a rich text means anything without what stands in front of it.
class PreviewRichTextBox : public ReadingBox {
 public:
    // To be called when it is first shown, since its library is large. `font` is for text that names none.
    bool Create(HWND parent, HFONT font);
    void SetFont(HFONT font);
    // False when the beginning cannot be read; the box is empty then.
    bool Show(PreviewData data);
    // Marks the words of a search in what is there.
    void Mark(WordSearch words);

    bool HasMore() const override { return taken_ < most_; }
    std::wstring Text() const override;
    void Choose(TextPlace place) override;
    std::size_t EndOfChosen() const override;

 private:
    bool Take(std::size_t bytes);
    void TakeMore(std::size_t bytes);
    void ReadMore() override;
    void ReadRest() override;
    void ForgetRest() override;
    std::optional<LRESULT> OnOwnMessage(UINT, WPARAM) override { return std::nullopt; }

    UniqueLibrary library_;
    PreviewData data_;
    std::size_t taken_ = 0;  // bytes of it
    std::size_t most_ = 0;
};
