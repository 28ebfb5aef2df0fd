#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "engine/search/TextDecoder.h"

// The text that a browser would show of HTML, as the clipboard has it: with or without the lines in front
// that say which part was copied, in UTF-8 or UTF-16. Nothing is executed, fetched or nested: the memory it
// needs does not depend on what it reads. The bytes come piece by piece, cut anywhere.
class HtmlText {
 public:
    void Take(std::string_view bytes, std::u16string& text);
    void End(std::u16string& text);
    // Nothing of what follows is shown.
    bool Ended() const { return ended_; }

 private:
    enum class State { Text, TagOpen, TagName, InTag, Quoted, Declaration, Comment, Entity, Raw };

    void EndHeader();
    void TakePart(std::string_view bytes, std::u16string& text);
    void Step(char16_t unit, std::u16string& text);
    void StepInText(char16_t unit, std::u16string& text);
    void StepInTagOpen(char16_t unit, std::u16string& text);
    void StepInTagName(char16_t unit, std::u16string& text);
    void StepInTag(char16_t unit, std::u16string& text);
    void StepInEntity(char16_t unit, std::u16string& text);
    void StepInRaw(char16_t unit);
    void EndTag(std::u16string& text);
    bool EndEntity(std::u16string& text);
    void Put(char16_t unit, std::u16string& text);
    void PutCode(std::uint32_t code, std::u16string& text);
    void PutBreak(std::u16string& text);

    // The part of the bytes that was copied.
    bool inHeader_ = true;
    std::string header_;
    std::size_t position_ = 0;
    std::size_t partBegin_ = 0;
    std::size_t partEnd_ = static_cast<std::size_t>(-1);

    TextDecoder decoder_{TextCoding::Guessed};
    std::u16string units_;
    bool ended_ = false;

    State state_ = State::Text;
    std::string name_;  // of a tag or an entity
    bool closing_ = false;
    bool afterEquals_ = false;
    char16_t quote_ = 0;
    int dashes_ = 0;
    std::string rawEnd_;  // what ends an element without markup in it
    std::size_t rawMatched_ = 0;
    int keepsBlanks_ = 0;
    bool blankWaits_ = false;
    char16_t lastPut_ = u'\n';
};
