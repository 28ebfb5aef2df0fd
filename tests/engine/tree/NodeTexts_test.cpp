#include "engine/tree/NodeTexts.h"

#include <gtest/gtest.h>

namespace {

// Plain, of the code page, beyond it, with a zero inside, and none.
const std::wstring kTexts[] = {L"C&1,2&", L"Größe €", L"Жизнь", std::wstring(L"a\0b", 3), L""};

TEST(NodeTextsTest, TextAndTag_OfAnyLettersAreKeptApart) {
    std::wstring reused = L"something longer than all of these texts";
    for (const std::wstring& text : kTexts) {
        for (const std::wstring& tag : kTexts) {
            NodeTexts texts(text, tag);
            for (const std::wstring& other : kTexts) {
                texts.SetTag(other);
                EXPECT_EQ(texts.Text().Text(), text);
                EXPECT_EQ(texts.Tag().Text(), other);
                texts.SetText(other);
                texts.SetTag(tag);
                EXPECT_EQ(texts.Text().Text(), other);
                texts.Tag().CopyTo(reused);
                EXPECT_EQ(reused, tag);
                texts.SetText(text);
            }
            EXPECT_EQ(texts.Tag().BeginsWith('C'), tag.starts_with(L'C'));
            EXPECT_EQ(texts.Text().IsAnsi(), text != L"Жизнь");
        }
    }
}

}  // namespace
