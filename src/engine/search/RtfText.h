#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// The text that a reader of Rich Text Format would show: without fonts, styles, pictures, objects and what is
// hidden. Its memory is bounded whatever it reads: groups that are nested more deeply than any text is lend
// their properties from the last one that counts. The bytes come piece by piece, cut anywhere.
class RtfText {
 public:
    void Take(std::string_view bytes, std::u16string& text);
    void End(std::u16string& text);
    // Nothing of what follows is shown.
    bool Ended() const { return ended_; }

 private:
    enum class State { Plain, Backslash, Word, Number, FirstDigit, SecondDigit, Binary };
    struct Group {
        bool shown = true;
        bool hidden = false;
        bool fonts = false;  // the table of the fonts
        unsigned codePage = 0;
        int substitutes = 1;  // characters behind one of Unicode that stand for it elsewhere
    };

    void Step(unsigned char byte, std::u16string& text);
    void StepInPlain(unsigned char byte, std::u16string& text);
    void StepInBackslash(unsigned char byte, std::u16string& text);
    void StepInWord(unsigned char byte, std::u16string& text);
    void StepInNumber(unsigned char byte, std::u16string& text);
    void StepInHexadecimal(unsigned char byte, std::u16string& text);
    void BeginGroup(std::u16string& text);
    void EndGroup(std::u16string& text);
    void EndWord(unsigned char behind, std::u16string& text);
    void ObeyWord(std::u16string& text);
    bool ObeyFontWord();
    void PutByte(unsigned char byte, std::u16string& text);
    void PutUnit(char16_t unit, std::u16string& text);
    void PutUnicode(std::u16string& text);
    // What was put as bytes becomes text.
    void PutWaiting(std::u16string& text);
    unsigned CodePageOfFont(int font) const;

    State state_ = State::Plain;
    Group group_;
    std::vector<Group> outer_;
    std::size_t deeper_ = 0;  // groups that are not kept
    bool optional_ = false;   // "\*": who does not know the next word passes its group by
    std::string word_;
    bool hasNumber_ = false;
    bool negative_ = false;
    std::int64_t number_ = 0;
    unsigned hexadecimal_ = 0;
    std::int64_t binary_ = 0;  // bytes that are no text
    int substitutesLeft_ = 0;
    unsigned defaultCodePage_ = 0;
    int font_ = 0;  // of the table
    std::map<int, unsigned> fonts_;
    std::string waiting_;
    bool ended_ = false;
};
