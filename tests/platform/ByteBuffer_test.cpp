#include "platform/ByteBuffer.h"

#include <gtest/gtest.h>

#include "fake/ErrorNumberOf.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kTooShort = static_cast<int>(ErrorNumber::FileTooShort);

TEST(ByteBuffer, Writer_CodesEveryKindAsDocumented) {
    ByteWriter writer;
    writer.Int16(-2);
    writer.UInt16(0xC123);
    writer.Int32(-3);
    writer.UInt32(0x89ABCDEF);
    writer.Flag(true);
    writer.Flag(false);
    writer.Text(L"Gruß");
    writer.Text(L"");
    const Bytes expected = {0xFE, 0xFF, 0x23, 0xC1, 0xFD, 0xFF, 0xFF, 0xFF, 0xEF, 0xCD, 0xAB, 0x89,
                            0xFF, 0xFF, 0,    0,    4,    0,    'G',  'r',  'u',  0xDF, 0,    0};
    EXPECT_EQ(writer.Image(), expected);

    ByteReader reader(writer.Image());
    EXPECT_EQ(reader.Int16(), -2);
    EXPECT_EQ(reader.UInt16(), 0xC123);
    EXPECT_EQ(reader.Int32(), -3);
    EXPECT_EQ(reader.UInt32(), 0x89ABCDEFu);
    EXPECT_TRUE(reader.Flag());
    EXPECT_FALSE(reader.Flag());
    EXPECT_EQ(reader.Text(), L"Gruß");
    EXPECT_EQ(reader.Text(), L"");
    EXPECT_EQ(reader.Remaining(), 0u);
}

TEST(ByteBuffer, Reader_FieldThatIsNotThereWhole_ThrowsAndMovesNothing) {
    const Bytes bytes = {3, 0, 'a'};
    ByteReader reader(bytes);
    std::uint8_t four[4];
    EXPECT_EQ(ErrorNumberOf([&] { reader.Int32(); }), kTooShort);
    EXPECT_EQ(ErrorNumberOf([&] { reader.Text(); }), kTooShort);
    EXPECT_EQ(ErrorNumberOf([&] { reader.Bytes(four, 4); }), kTooShort);
    EXPECT_EQ(ErrorNumberOf([&] { reader.Skip(4); }), kTooShort);
    EXPECT_EQ(ErrorNumberOf([&] { reader.Count32(1); }), kTooShort);
    EXPECT_EQ(reader.Remaining(), 3u);
    EXPECT_EQ(reader.UInt16(), 3);
    EXPECT_EQ(ErrorNumberOf([&] { reader.UInt16(); }), kTooShort);
}

TEST(ByteBuffer, Text_LongestFitsAndOneMoreIsRefused) {
    const std::wstring longest(kLongestStoredText, L'ä');
    ByteWriter writer;
    writer.Text(longest);
    ByteReader reader(writer.Image());
    EXPECT_EQ(reader.Text(), longest);
    EXPECT_TRUE(FitsStoredText(longest));
    EXPECT_FALSE(FitsStoredText(longest + L'x'));
    EXPECT_EQ(ErrorNumberOf([&] { writer.Text(longest + L'x'); }), static_cast<int>(ErrorNumber::Overflow));
    EXPECT_EQ(writer.Image().size(), 2 + longest.size()) << "nothing of it is left";
}

}  // namespace
