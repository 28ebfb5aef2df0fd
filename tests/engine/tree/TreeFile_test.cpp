#include "engine/tree/TreeFile.h"

#include <gtest/gtest.h>

#include <limits>

#include "engine/tree/TreeFileLayout.h"
#include "fake/DocumentedBytes.h"
#include "fake/ErrorNumberOf.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

TreeNodeRecord Record(const std::wstring& tag, const std::wstring& text, std::int16_t depth,
                      const ImageValue& image, bool expanded) {
    TreeNodeRecord record;
    record.Tag = tag;
    record.Text = text;
    record.Depth = depth;
    record.Image = image;
    record.Expanded = expanded;
    return record;
}

TreeData DataOf(const std::vector<TreeNodeRecord>& records) {
    TreeData data;
    data.Count = static_cast<std::int32_t>(records.size());
    data.Nodes.insert(data.Nodes.end(), records.begin(), records.end());
    return data;
}

TreeData Example() {
    return DataOf({Record(L"P&1&D:\\Clips&0&", L"Texte", 0, L"Profile", true),
                   Record(L"S&", L"Briefe", 1, L"Structure", true),
                   Record(L"C&1,2&15.11.1999 10:00:00&", L"Gruß", 2, L"Clip", false)});
}

int ErrorOf(const Bytes& image) {
    return ErrorNumberOf([&] { DecodeTreeData(image); });
}

void PutInt32(Bytes& image, std::size_t offset, std::int32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        image[offset + i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> (8 * i));
}

TEST(TreeFileTest, Encode_GivesTheDocumentedBytes) {
    const std::string example = DocumentedBytes("nxclip-nxp.md");
    const Bytes documented(example.begin(), example.end());
    EXPECT_EQ(EncodeTreeData(Example()), documented);
    EXPECT_EQ(DecodeTreeData(documented), Example());
}

TEST(TreeFileTest, Decode_IgnoresTheTailAndUnusedElements) {
    Bytes image = EncodeTreeData(Example());
    image.resize(image.size() + 100, 0xFF);
    EXPECT_EQ(DecodeTreeData(image), Example());

    // Elements -1 to 3 instead of 0 to 3: one more in front.
    image = EncodeTreeData(Example());
    image.insert(image.begin() + kTreeFileHeaderSize, kSmallestTreeRecordSize, 0);
    PutInt32(image, 6, 5);
    PutInt32(image, 10, -1);
    EXPECT_EQ(DecodeTreeData(image), Example());

    // Elements 1 to 3: none in front.
    image = EncodeTreeData(Example());
    image.erase(image.begin() + kTreeFileHeaderSize,
                image.begin() + kTreeFileHeaderSize + kSmallestTreeRecordSize);
    PutInt32(image, 6, 3);
    PutInt32(image, 10, 1);
    EXPECT_EQ(DecodeTreeData(image), Example());

    // More elements than nodes, as an emptied tree has them.
    image = EncodeTreeData(Example());
    PutInt32(image, 0, 0);
    EXPECT_EQ(DecodeTreeData(image), TreeData{});
}

TEST(TreeFileTest, Decode_RefusesAFileCutAnywhere) {
    const Bytes whole = EncodeTreeData(Example());
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(ErrorOf(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size))), 62)
            << size;
}

TEST(TreeFileTest, Decode_RefusesHostileCounts) {
    const auto with = [](std::size_t offset, std::int32_t value) {
        Bytes image = EncodeTreeData(Example());
        PutInt32(image, offset, value);
        return ErrorOf(image);
    };
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    for (const std::int32_t count : {-1, 4, kMost, kLeast})
        EXPECT_EQ(with(0, count), 9) << count;
    for (const std::int32_t elements : {-1, 9, kMost, kLeast})
        EXPECT_EQ(with(6, elements), 62) << elements;
    EXPECT_EQ(with(6, 3), 9);
    for (const std::int32_t bound : {-1, 2, kMost, kLeast})
        EXPECT_EQ(with(10, bound), 9) << bound;

    Bytes image = EncodeTreeData(Example());
    image[4] = 2;  // dimensions
    EXPECT_EQ(ErrorOf(image), 13);
}

TEST(TreeFileTest, Decode_RefusesUnknownVariantTypes) {
    for (const int type : {4, 5, 7, 9, 10, 12, 0x2008, 0xFFFF}) {
        Bytes image = EncodeTreeData(Example());
        image[0x3C] = static_cast<std::uint8_t>(type);
        image[0x3D] = static_cast<std::uint8_t>(type >> 8);
        EXPECT_EQ(ErrorOf(image), 13) << type;
    }
}

}  // namespace
