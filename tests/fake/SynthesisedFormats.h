#pragma once

#include <string>
#include <vector>

#include "platform/Clipboard.h"

// What the system makes of the formats that somebody put on the clipboard.

struct SynthesisedFormat {
    FormatNumber format;
    FormatNumber madeFrom;
};

// The further formats that these offer, in the order of their enumeration. Pictures are only turned into
// bitmaps and back, not into metafiles.
std::vector<SynthesisedFormat> SynthesisedFormatsOf(const std::vector<FormatNumber>& formats);

// The bytes of `format` made of the bytes of `madeFrom`. Not for bitmap objects, which have none.
std::string SynthesisedBytes(FormatNumber format, FormatNumber madeFrom, const std::string& bytes);
