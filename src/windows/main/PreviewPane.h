#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "engine/views/ListUpdate.h"
#include "engine/views/MainLayout.h"
#include "platform/win32/SystemHandles.h"
#include "windows/controls/PictureBox.h"

// The preview below the list: a tab (tabFormat) with a text box, a rich-text box and a picture box. It shows
// one format of the selected clip, read from the clip's file when its tab is looked at.
class PreviewPane {
 public:
    bool Create(HWND parent);
    void SetFont(HFONT font);
    // Places the tab and what stands in it; an empty box hides them.
    void Place(const Box& area);

    // Empties all three boxes.
    void Clear();
    // Shows the format that belongs to the chosen tab. `content` must stay as it is until Clear or the next
    // Show.
    void Show(const ListContent& content);
    void SetStretch(bool stretch) { picture_.SetStretch(stretch); }

    bool IsTab(HWND window) const { return window == tab_; }
    // Another tab was chosen.
    void TabChanged();
    // True for a key that copies, selects or deletes in one of the text boxes, which is no command then.
    bool Wants(const MSG& message) const;
    // The box of the chosen tab, for the focus.
    HWND ChosenBox() const;

 private:
    enum class Tab { Text = 0, RichText = 1, Picture = 2 };
    Tab Chosen() const;
    void ShowText();
    void ShowRichText();
    void ShowPicture();
    // Reads a format's data from the clip's file and lends it to `use`. False when it cannot be read, or is
    // not liked.
    bool WithData(CFormat& format, const std::function<bool(std::span<const std::uint8_t>)>& use) const;
    CFormat* FindById(FormatNumber id) const;
    CFormat* FindByName(const std::wstring& name) const;
    void ClearBoxes();
    void LayOutInside();

    HWND tab_ = nullptr;
    HWND text_ = nullptr;
    HWND richText_ = nullptr;
    UniqueLibrary richTextLibrary_;
    PictureBox picture_;
    const ListContent* content_ = nullptr;
    bool shown_ = false;
};
