#include "platform/Text.h"

#include <gtest/gtest.h>

#include <limits>

TEST(Text, ParseInt_TakesWholeNumbersThatFit) {
    EXPECT_EQ(ParseInt32(L" -12 "), -12);
    EXPECT_EQ(ParseInt32(L"+7"), 7);
    EXPECT_EQ(ParseInt32(L"007"), 7);
    EXPECT_EQ(ParseInt32(L"2147483647"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(ParseInt32(L"-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ParseInt16(L"32767"), 32767);
    EXPECT_EQ(ParseInt16(L"-32768"), -32768);
}

TEST(Text, ParseInt_RefusesTheRest) {
    for (const wchar_t* text : {L"", L" ", L"-", L"+", L"+-1", L"1 2", L"1.5", L"0x10", L"12a", L"٣",
                                L"2147483648", L"-2147483649", L"99999999999999999999999999"})
        EXPECT_EQ(ParseInt32(text), std::nullopt) << AnsiFromText(text);
    EXPECT_EQ(ParseInt16(L"32768"), std::nullopt);
    EXPECT_EQ(ParseInt16(L"-32769"), std::nullopt);
}
