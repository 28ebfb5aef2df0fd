#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// A text whose longest lines are broken for showing: what a text box spends on a line grows with the square
// of its length. The breaks are no part of the text, so what is copied and searched knows nothing of them.
// Places are counted in units of the text's own characters (of UTF-16 on Windows).
class BrokenLines {
 public:
    // More than any window is wide. Behind a space a line ends before that.
    static constexpr std::size_t kLongestLine = 1000;
    static constexpr std::size_t kLongLine = 900;

    // `text` as it is to be shown behind what came before; its line ends are CR LF.
    std::wstring Append(std::wstring_view text);
    // A part of what is shown, from this place of it on, as it stands in the text.
    std::wstring Original(std::wstring_view shown, std::size_t from) const;
    // Where a place of the text is shown, and the other way round.
    std::size_t ShownPlace(std::size_t original) const;
    std::size_t OriginalPlace(std::size_t shown) const;
    // True when there is a break between these places of what is shown.
    bool HasBreaks(std::size_t from, std::size_t to) const;

 private:
    std::vector<std::size_t> breaks_;  // where each begins in what is shown, in order
    std::size_t size_ = 0;             // of what is shown
    std::size_t column_ = 0;           // in the last line
    bool behindSpace_ = false;
};
