#include "engine/search/RtfText.h"

#include <algorithm>
#include <array>

#include "platform/Text.h"

namespace {

constexpr std::size_t kMostGroups = 256;
constexpr std::size_t kMostFonts = 4096;
constexpr std::size_t kLongestWord = 32;
constexpr std::size_t kMostWaiting = 4096;
constexpr std::int64_t kLargestNumber = 0x7FFFFFFF;
constexpr unsigned kWestern = 1252;

bool IsLetter(unsigned char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

bool IsDigit(unsigned char byte) {
    return byte >= '0' && byte <= '9';
}

// Groups whose text is not shown where they stand.
bool IsHiddenGroup(std::string_view word) {
    static constexpr std::array<std::string_view, 27> kWords = {
        "colortbl",   "stylesheet", "info",      "pict",      "object",    "objdata",
        "fldinst",    "header",     "headerl",   "headerr",   "headerf",   "footer",
        "footerl",    "footerr",    "footerf",   "filetbl",   "listtable", "listoverridetable",
        "revtbl",     "rsidtbl",    "generator", "themedata", "datastore", "xmlnstbl",
        "nonshppict", "bkmkstart",  "bkmkend"};
    return std::find(kWords.begin(), kWords.end(), word) != kWords.end();
}

struct WordCharacter {
    std::string_view word;
    char16_t unit;
};
constexpr std::array<WordCharacter, 19> kCharacters = {{{"par", u'\n'},
                                                        {"line", u'\n'},
                                                        {"row", u'\n'},
                                                        {"nestrow", u'\n'},
                                                        {"sect", u'\n'},
                                                        {"page", u'\n'},
                                                        {"tab", u'\t'},
                                                        {"cell", u'\t'},
                                                        {"nestcell", u'\t'},
                                                        {"emdash", 0x2014},
                                                        {"endash", 0x2013},
                                                        {"bullet", 0x2022},
                                                        {"lquote", 0x2018},
                                                        {"rquote", 0x2019},
                                                        {"ldblquote", 0x201C},
                                                        {"rdblquote", 0x201D},
                                                        {"emspace", u' '},
                                                        {"enspace", u' '},
                                                        {"qmspace", u' '}}};

struct Charset {
    std::int64_t number;
    unsigned codePage;
};
constexpr std::array<Charset, 15> kCharsets = {{{0, 1252},
                                                {77, 10000},
                                                {128, 932},
                                                {129, 949},
                                                {134, 936},
                                                {136, 950},
                                                {161, 1253},
                                                {162, 1254},
                                                {163, 1258},
                                                {177, 1255},
                                                {178, 1256},
                                                {186, 1257},
                                                {204, 1251},
                                                {222, 874},
                                                {238, 1250}}};

// 0 for one that says nothing about it.
unsigned CodePageOfCharset(std::int64_t number) {
    const auto found = std::find_if(kCharsets.begin(), kCharsets.end(),
                                    [=](const Charset& charset) { return charset.number == number; });
    return found != kCharsets.end() ? found->codePage : 0;
}

unsigned ValueOf(unsigned char digit) {
    if (IsDigit(digit)) return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10u;
    return digit >= 'A' && digit <= 'F' ? digit - 'A' + 10u : 0;
}

}  // namespace

void RtfText::Take(std::string_view bytes, std::u16string& text) {
    for (std::size_t i = 0; i < bytes.size() && !ended_; ++i) {
        if (state_ == State::Binary) {
            const auto skipped = static_cast<std::size_t>(
                std::min<std::int64_t>(binary_, static_cast<std::int64_t>(bytes.size() - i)));
            binary_ -= static_cast<std::int64_t>(skipped);
            i += skipped;
            if (binary_ == 0) state_ = State::Plain;
            if (i == bytes.size()) return;
        }
        Step(static_cast<unsigned char>(bytes[i]), text);
    }
}

void RtfText::End(std::u16string& text) {
    if (state_ == State::Word || state_ == State::Number) EndWord(' ', text);
    PutWaiting(text);
}

void RtfText::Step(unsigned char byte, std::u16string& text) {
    switch (state_) {
        case State::Backslash:
            return StepInBackslash(byte, text);
        case State::Word:
            return StepInWord(byte, text);
        case State::Number:
            return StepInNumber(byte, text);
        case State::FirstDigit:
        case State::SecondDigit:
            return StepInHexadecimal(byte, text);
        default:
            return StepInPlain(byte, text);
    }
}

void RtfText::StepInPlain(unsigned char byte, std::u16string& text) {
    switch (byte) {
        case 0:
            ended_ = true;
            return;
        case '{':
            return BeginGroup(text);
        case '}':
            return EndGroup(text);
        case '\\':
            state_ = State::Backslash;
            return;
        case '\r':
        case '\n':
            return;
        default:
            optional_ = false;
            PutByte(byte, text);
    }
}

void RtfText::BeginGroup(std::u16string& text) {
    PutWaiting(text);
    substitutesLeft_ = 0;
    optional_ = false;
    if (outer_.size() < kMostGroups)
        outer_.push_back(group_);
    else
        ++deeper_;
}

void RtfText::EndGroup(std::u16string& text) {
    PutWaiting(text);
    substitutesLeft_ = 0;
    optional_ = false;
    if (deeper_ > 0) {
        --deeper_;
    } else if (outer_.empty()) {
        ended_ = true;
    } else {
        group_ = outer_.back();
        outer_.pop_back();
        ended_ = outer_.empty();
    }
}

void RtfText::StepInBackslash(unsigned char byte, std::u16string& text) {
    state_ = State::Plain;
    if (IsLetter(byte)) {
        state_ = State::Word;
        word_.assign(1, static_cast<char>(byte));
        hasNumber_ = negative_ = false;
        number_ = 0;
        return;
    }
    switch (byte) {
        case '\'':
            state_ = State::FirstDigit;
            return;
        case '*':
            optional_ = true;
            return;
        case '\\':
        case '{':
        case '}':
            return PutByte(byte, text);
        case '~':
            return PutByte(' ', text);
        case '_':
            return PutByte('-', text);
        case '\r':
        case '\n':
            return PutUnit(u'\n', text);
        case '\t':
            return PutUnit(u'\t', text);
        default:
            return;
    }
}

void RtfText::StepInWord(unsigned char byte, std::u16string& text) {
    if (IsLetter(byte)) {
        if (word_.size() < kLongestWord) word_ += static_cast<char>(byte);
    } else if (IsDigit(byte) || byte == '-') {
        state_ = State::Number;
        negative_ = byte == '-';
        if (!negative_) StepInNumber(byte, text);
    } else {
        EndWord(byte, text);
    }
}

void RtfText::StepInNumber(unsigned char byte, std::u16string& text) {
    if (IsDigit(byte)) {
        hasNumber_ = true;
        number_ = std::min(number_ * 10 + (byte - '0'), kLargestNumber);
    } else {
        EndWord(byte, text);
    }
}

void RtfText::EndWord(unsigned char behind, std::u16string& text) {
    state_ = State::Plain;
    if (negative_) number_ = -number_;
    ObeyWord(text);
    // A blank only ends the word.
    if (behind != ' ' && state_ == State::Plain && !ended_)
        StepInPlain(behind, text);
    else if (behind != ' ' && state_ == State::Binary && binary_ > 0 && --binary_ == 0)
        state_ = State::Plain;
}

void RtfText::StepInHexadecimal(unsigned char byte, std::u16string& text) {
    if (state_ == State::FirstDigit) {
        hexadecimal_ = ValueOf(byte);
        state_ = State::SecondDigit;
        return;
    }
    state_ = State::Plain;
    PutByte(static_cast<unsigned char>(hexadecimal_ * 16 + ValueOf(byte)), text);
}

void RtfText::ObeyWord(std::u16string& text) {
    if (optional_ || IsHiddenGroup(word_)) {
        PutWaiting(text);
        group_.shown = false;
        optional_ = false;
    }
    if (word_ == "bin") {
        binary_ = std::max<std::int64_t>(number_, 0);
        if (binary_ > 0) state_ = State::Binary;
        return;
    }
    if (word_ == "u" && hasNumber_) return PutUnicode(text);
    if (word_ == "uc") {
        group_.substitutes = static_cast<int>(std::clamp<std::int64_t>(number_, 0, 16));
        return;
    }
    const auto character = std::find_if(kCharacters.begin(), kCharacters.end(),
                                        [this](const WordCharacter& one) { return one.word == word_; });
    if (character != kCharacters.end()) return PutUnit(character->unit, text);
    // What follows may be in another code page, or not be shown.
    PutWaiting(text);
    if (word_ == "fonttbl") {
        group_.fonts = true;
        group_.shown = false;
    } else if (word_ == "ansicpg") {
        defaultCodePage_ = group_.codePage = static_cast<unsigned>(std::max<std::int64_t>(number_, 0));
    } else if (word_ == "v") {
        group_.hidden = !hasNumber_ || number_ != 0;
    } else if (word_ == "plain") {
        group_.hidden = false;
        group_.codePage = defaultCodePage_;
    } else if (!ObeyFontWord() && word_ == "f") {
        group_.codePage = CodePageOfFont(static_cast<int>(number_));
    }
}

// The table says in which code page the bytes of each font are.
bool RtfText::ObeyFontWord() {
    if (!group_.fonts) return false;
    if (word_ == "f") font_ = static_cast<int>(number_);
    unsigned codePage = 0;
    if (word_ == "fcharset") codePage = CodePageOfCharset(number_);
    if (word_ == "cpg" && number_ > 0) codePage = static_cast<unsigned>(number_);
    if (codePage != 0 && (fonts_.size() < kMostFonts || fonts_.contains(font_))) fonts_[font_] = codePage;
    return true;
}

unsigned RtfText::CodePageOfFont(int font) const {
    const auto known = fonts_.find(font);
    return known != fonts_.end() ? known->second : defaultCodePage_;
}

void RtfText::PutByte(unsigned char byte, std::u16string& text) {
    if (substitutesLeft_ > 0)
        --substitutesLeft_;
    else if (group_.shown && !group_.hidden)
        waiting_ += static_cast<char>(byte);
    if (waiting_.size() >= kMostWaiting) PutWaiting(text);
}

void RtfText::PutUnit(char16_t unit, std::u16string& text) {
    PutWaiting(text);
    substitutesLeft_ = 0;
    if (group_.shown && !group_.hidden) text += unit;
}

// Numbers above 32767 are written as negative ones.
void RtfText::PutUnicode(std::u16string& text) {
    PutUnit(static_cast<char16_t>(number_ & 0xFFFF), text);
    substitutesLeft_ = group_.substitutes;
}

void RtfText::PutWaiting(std::u16string& text) {
    if (waiting_.empty()) return;
    const bool plain = std::all_of(waiting_.begin(), waiting_.end(),
                                   [](char byte) { return static_cast<signed char>(byte) >= 0; });
    if (plain)
        text.append(waiting_.begin(), waiting_.end());
    else
        text += Utf16FromText(TextFromCodePage(group_.codePage != 0 ? group_.codePage : kWestern, waiting_));
    waiting_.clear();
}
