#include "engine/views/PreviewText.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring Shown(const std::string& bytes) {
    return PreviewTextOf({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

}  // namespace

TEST(PreviewText, PreviewTextOf_EndsEveryLineAsTheTextBoxWantsIt) {
    EXPECT_EQ(Shown("a\nb\rc\r\nd\n\n\r\r\n"), L"a\r\nb\r\nc\r\nd\r\n\r\n\r\n\r\n");
    EXPECT_EQ(Shown("a\r"), L"a\r\n");
    EXPECT_EQ(Shown(std::string("gr\xFCn\0verborgen", 14)), L"grün");
    const std::wstring most = Shown(std::string(kMostPreviewBytes, 'x'));
    EXPECT_EQ(most.size(), kMostPreviewBytes);
    EXPECT_EQ(Shown(std::string(kMostPreviewBytes + 1, 'x')), most + L"\r\n[...]");
}
