#include "engine/search/HtmlText.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

// More than the lines in front have.
constexpr std::size_t kLongestHeader = 8192;
constexpr std::size_t kLongestName = 16;
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

bool IsBlank(char16_t unit) {
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}

bool IsLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

char LowerOf(char16_t unit) {
    const char letter = unit < 0x80 ? static_cast<char>(unit) : '?';
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// What stands between words that are shown in lines of their own.
bool BreaksLine(std::string_view tag) {
    static constexpr std::array<std::string_view, 37> kTags = {
        "address", "article", "aside",  "blockquote", "br",  "caption", "center",  "dd", "div", "dl",
        "dt",      "figure",  "footer", "form",       "h1",  "h2",      "h3",      "h4", "h5",  "h6",
        "header",  "hr",      "li",     "main",       "nav", "ol",      "option",  "p",  "pre", "section",
        "select",  "table",   "row",    "tbody",      "tr",  "ul",      "fieldset"};
    return std::find(kTags.begin(), kTags.end(), tag) != kTags.end();
}

bool IsRaw(std::string_view tag) {
    return tag == "script" || tag == "style" || tag == "title";
}

struct NamedCharacter {
    std::string_view name;
    char16_t unit;
};

// The letters of Latin 1 from 160 on, in their order; behind them those that texts have beside them.
constexpr std::array<std::string_view, 96> kLatin1 = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",
    "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",   "sup3",
    "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",  "frac14", "frac12",
    "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde", "Auml",   "Aring",  "AElig",  "Ccedil",
    "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave", "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde",
    "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",   "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",
    "Uuml",   "Yacute", "THORN",  "szlig",  "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",
    "aelig",  "ccedil", "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",
    "eth",    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave",
    "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};
constexpr std::array<NamedCharacter, 27> kOthers = {
    {{"amp", u'&'},     {"lt", u'<'},      {"gt", u'>'},       {"quot", u'"'},     {"apos", u'\''},
     {"OElig", 0x152},  {"oelig", 0x153},  {"Scaron", 0x160},  {"scaron", 0x161},  {"Yuml", 0x178},
     {"ensp", u' '},    {"emsp", u' '},    {"thinsp", u' '},   {"ndash", 0x2013},  {"mdash", 0x2014},
     {"lsquo", 0x2018}, {"rsquo", 0x2019}, {"sbquo", 0x201A},  {"ldquo", 0x201C},  {"rdquo", 0x201D},
     {"bdquo", 0x201E}, {"bull", 0x2022},  {"hellip", 0x2026}, {"lsaquo", 0x2039}, {"rsaquo", 0x203A},
     {"euro", 0x20AC},  {"trade", 0x2122}}};

// 0 for a name that is not known.
char16_t CharacterNamed(std::string_view name) {
    const auto latin = std::find(kLatin1.begin(), kLatin1.end(), name);
    if (latin != kLatin1.end()) return static_cast<char16_t>(160 + (latin - kLatin1.begin()));
    const auto other = std::find_if(kOthers.begin(), kOthers.end(),
                                    [=](const NamedCharacter& one) { return one.name == name; });
    return other != kOthers.end() ? other->unit : u'\0';
}

// "#252" or "#xFC"; 0 for none.
std::uint32_t CharacterNumbered(std::string_view name) {
    name.remove_prefix(1);
    const bool hexadecimal = name.starts_with('x') || name.starts_with('X');
    if (hexadecimal) name.remove_prefix(1);
    std::uint32_t code = 0;
    const auto read = std::from_chars(name.data(), name.data() + name.size(), code, hexadecimal ? 16 : 10);
    const bool isCharacter = read.ec == std::errc() && code <= 0x10FFFF && !(code >= 0xD800 && code < 0xE000);
    return isCharacter ? code : 0;
}

// A place that a line in front names, in bytes; kNone when it names none.
std::size_t PlaceIn(std::string_view header, std::string_view key) {
    const std::size_t line = header.find(key);
    if (line == std::string_view::npos) return kNone;
    const std::string_view digits = header.substr(line + key.size());
    std::size_t place = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), place);
    return read.ec == std::errc() ? place : kNone;
}

}  // namespace

void HtmlText::Take(std::string_view bytes, std::u16string& text) {
    if (ended_) return;
    if (inHeader_) {
        const std::size_t markup = bytes.find('<');
        const std::size_t taken = std::min({markup, bytes.size(), kLongestHeader - header_.size()});
        header_ += bytes.substr(0, taken);
        if (markup == std::string_view::npos && header_.size() < kLongestHeader) return;
        EndHeader();
        bytes.remove_prefix(taken);
    }
    TakePart(bytes, text);
}

// When the header's lines are missing, what was read belongs to the text.
void HtmlText::EndHeader() {
    inHeader_ = false;
    if (!header_.starts_with("Version:")) return;
    position_ = header_.size();
    const std::size_t begin = PlaceIn(header_, "StartFragment:");
    const std::size_t end = PlaceIn(header_, "EndFragment:");
    header_.clear();
    if (begin == kNone || end == kNone || begin < position_ || end <= begin) return;
    partBegin_ = begin;
    partEnd_ = end;
}

void HtmlText::TakePart(std::string_view bytes, std::u16string& text) {
    if (!header_.empty()) {
        const std::string before = std::move(header_);
        header_.clear();
        TakePart(before, text);
    }
    const std::size_t begin = std::min(bytes.size(), partBegin_ - std::min(partBegin_, position_));
    const std::size_t end = std::min(bytes.size(), partEnd_ - std::min(partEnd_, position_));
    position_ += bytes.size();
    if (end <= begin) return;
    units_.clear();
    decoder_.Take(bytes.substr(begin, end - begin), units_);
    for (const char16_t unit : units_)
        Step(unit, text);
}

void HtmlText::End(std::u16string& text) {
    if (inHeader_) {
        EndHeader();
        TakePart({}, text);
    }
    units_.clear();
    decoder_.End(units_);
    for (const char16_t unit : units_)
        Step(unit, text);
    if (state_ == State::Entity) EndEntity(text);
}

void HtmlText::Step(char16_t unit, std::u16string& text) {
    if (unit == 0) ended_ = true;
    if (ended_ || unit == 0xFEFF) return;
    switch (state_) {
        case State::Text:
            return StepInText(unit, text);
        case State::TagOpen:
            return StepInTagOpen(unit, text);
        case State::TagName:
            return StepInTagName(unit, text);
        case State::InTag:
            return StepInTag(unit, text);
        case State::Quoted:
            if (unit == quote_) state_ = State::InTag;
            return;
        case State::Declaration:
            if (unit == u'-' && dashes_ >= 0 && ++dashes_ == 2) {
                state_ = State::Comment;
                dashes_ = 2;  // "<!-->" is a whole comment
            } else if (unit != u'-') {
                dashes_ = -1;
            }
            if (unit == u'>') state_ = State::Text;
            return;
        case State::Comment:
            if (unit == u'>' && dashes_ >= 2) state_ = State::Text;
            dashes_ = unit == u'-' ? dashes_ + (dashes_ < 2 ? 1 : 0) : 0;
            return;
        case State::Entity:
            return StepInEntity(unit, text);
        case State::Raw:
            return StepInRaw(unit);
    }
}

void HtmlText::StepInText(char16_t unit, std::u16string& text) {
    if (unit == u'<') {
        state_ = State::TagOpen;
    } else if (unit == u'&') {
        state_ = State::Entity;
        name_.clear();
    } else {
        Put(unit, text);
    }
}

void HtmlText::StepInTagOpen(char16_t unit, std::u16string& text) {
    if (unit == u'!' || unit == u'?') {
        state_ = State::Declaration;
        dashes_ = unit == u'!' ? 0 : -1;
        closing_ = false;
    } else if (unit == u'/' && !closing_) {
        closing_ = true;
    } else if (IsLetter(unit)) {
        state_ = State::TagName;
        name_.assign(1, LowerOf(unit));
    } else {
        // A "<" that opens nothing.
        state_ = State::Text;
        Put(u'<', text);
        if (closing_) Put(u'/', text);
        closing_ = false;
        StepInText(unit, text);
    }
}

void HtmlText::StepInTagName(char16_t unit, std::u16string& text) {
    if (unit == u'>' || unit == u'/' || IsBlank(unit)) {
        state_ = State::InTag;
        afterEquals_ = false;
        StepInTag(unit, text);
    } else if (name_.size() < kLongestName) {
        name_ += LowerOf(unit);
    }
}

void HtmlText::StepInTag(char16_t unit, std::u16string& text) {
    if (unit == u'>') {
        EndTag(text);
    } else if ((unit == u'"' || unit == u'\'') && afterEquals_) {
        quote_ = unit;
        state_ = State::Quoted;
        afterEquals_ = false;
    } else if (unit == u'=') {
        afterEquals_ = true;
    } else if (!IsBlank(unit)) {
        afterEquals_ = false;
    }
}

void HtmlText::EndTag(std::u16string& text) {
    const bool closing = closing_;
    closing_ = false;
    state_ = State::Text;
    if (name_ == "pre") keepsBlanks_ = std::max(0, keepsBlanks_ + (closing ? -1 : 1));
    if (BreaksLine(name_)) PutBreak(text);
    if (name_ == "td" || name_ == "th" || name_ == "data") blankWaits_ = true;
    if (closing || !IsRaw(name_)) return;
    state_ = State::Raw;
    rawEnd_ = "</" + name_;
    rawMatched_ = 0;
}

void HtmlText::StepInRaw(char16_t unit) {
    if (LowerOf(unit) != rawEnd_[rawMatched_]) rawMatched_ = 0;
    if (LowerOf(unit) == rawEnd_[rawMatched_]) ++rawMatched_;
    if (rawMatched_ < rawEnd_.size()) return;
    state_ = State::InTag;
    closing_ = true;
    afterEquals_ = false;
}

void HtmlText::StepInEntity(char16_t unit, std::u16string& text) {
    const bool goesOn = IsLetter(unit) || (unit >= u'0' && unit <= u'9') || (unit == u'#' && name_.empty());
    if (goesOn && name_.size() < kLongestName) {
        name_ += static_cast<char>(unit);
        return;
    }
    const bool known = EndEntity(text);
    if (unit != u';' || !known) StepInText(unit, text);
}

// Puts the character that was named; false for a name of none, which stands as it is.
bool HtmlText::EndEntity(std::u16string& text) {
    state_ = State::Text;
    const std::uint32_t code = name_.starts_with('#') ? CharacterNumbered(name_) : CharacterNamed(name_);
    if (code != 0) {
        PutCode(code, text);
    } else {
        Put(u'&', text);
        for (const char letter : name_)
            Put(static_cast<unsigned char>(letter), text);
    }
    return code != 0;
}

void HtmlText::PutCode(std::uint32_t code, std::u16string& text) {
    constexpr std::uint32_t kSoftHyphen = 0xAD;
    if (code == kSoftHyphen) return;
    if (code >= 0x10000) {
        Put(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)), text);
        Put(static_cast<char16_t>(0xDC00 + (code & 0x3FF)), text);
    } else {
        Put(static_cast<char16_t>(code), text);
    }
}

void HtmlText::Put(char16_t unit, std::u16string& text) {
    constexpr char16_t kNoBreakSpace = 0xA0;
    if (IsBlank(unit) && keepsBlanks_ == 0) {
        blankWaits_ = true;
        return;
    }
    if (unit == u'\r') return;
    if (blankWaits_ && lastPut_ != u'\n') text += u' ';
    blankWaits_ = false;
    lastPut_ = unit == kNoBreakSpace ? u' ' : unit;
    text += lastPut_;
}

void HtmlText::PutBreak(std::u16string& text) {
    blankWaits_ = false;
    if (lastPut_ == u'\n') return;
    lastPut_ = u'\n';
    text += u'\n';
}
