#pragma once

#include "engine/clipboard/CFormats.h"

// The tabs of the preview, by their place.
enum class PreviewTab { Text = 0, RichText = 1, Picture = 2 };

// The format of a clip that a tab shows; null when the clip has none for it. In a clip without a plain text
// the first tab shows what is seen of its HTML, or the names of its files.
const CFormat* PreviewFormat(const CFormats& formats, PreviewTab tab);

// The tab to bring to the front: the chosen one as long as it has a format of its own to show, else the first
// that has. With nothing to show anywhere the chosen one stays.
PreviewTab TabToShow(const CFormats& formats, PreviewTab chosen);

// True for a picture that has to be decoded first.
bool IsPng(const CFormat& format);
