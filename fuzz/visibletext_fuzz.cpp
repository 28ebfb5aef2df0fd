// The readers of a format's visible text on any bytes: what they show does not depend on how the bytes are
// cut, and is not more than the bytes can stand for. Input: the form, the size of the pieces, the data.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "Require.h"
#include "engine/search/VisibleText.h"

namespace {

// One byte is one unit at most, but for a few that stand for a break each, and an entity's name that is none.
constexpr std::size_t kMostUnitsPerByte = 4;

std::u16string Read(TextForm form, std::string_view bytes, std::size_t piece) {
    const auto reader = VisibleText::Of(form);
    std::u16string text;
    while (!bytes.empty()) {
        const std::size_t count = std::min(piece, bytes.size());
        reader->Take(bytes.substr(0, count), text);
        bytes.remove_prefix(count);
    }
    reader->End(text);
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    constexpr TextForm kForms[] = {TextForm::Html,  TextForm::RichText, TextForm::Files, TextForm::Guessed,
                                   TextForm::Utf16, TextForm::Ansi,     TextForm::Oem};
    const TextForm form = kForms[data[0] % std::size(kForms)];
    const std::size_t piece = data[1] % 40 + 1u;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
    const std::u16string whole = Read(form, bytes, bytes.size() + 1);
    Require(whole == Read(form, bytes, piece));
    Require(whole.size() <= kMostUnitsPerByte * bytes.size());
    return 0;
}
