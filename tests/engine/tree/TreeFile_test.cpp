#include "engine/tree/TreeFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <sstream>

#include "engine/tree/TreeFileLayout.h"
#include "platform/RuntimeError.h"

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

// 0 when the image is read.
int ErrorOf(const Bytes& image) {
    try {
        DecodeTreeData(image);
        return 0;
    } catch (const RuntimeError& error) {
        return error.Number();
    }
}

void PutInt32(Bytes& image, std::size_t offset, std::int32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        image[offset + i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> (8 * i));
}

#ifndef _WIN32  // the Windows tests may run where the sources are not
TEST(TreeFileTest, Encode_GivesTheBytesOfTheDescription) {
    const auto document =
        std::filesystem::path(__FILE__).parent_path() / "../../../docs/formats/nxclip-nxp.md";
    std::ifstream file(document);
    ASSERT_TRUE(file) << document;
    Bytes described;
    bool inDump = false;
    for (std::string line; std::getline(file, line);) {
        if (line == "```") {
            inDump = !inDump;
        } else if (inDump) {
            // Four digits of offset, two blanks, sixteen bytes in 47 columns, the characters.
            EXPECT_EQ(std::stoul(line.substr(0, 4), nullptr, 16), described.size());
            std::istringstream columns(line.substr(6, 47));
            for (unsigned value; columns >> std::hex >> value;)
                described.push_back(static_cast<std::uint8_t>(value));
        }
    }
    EXPECT_EQ(described.size(), 170u);
    EXPECT_EQ(EncodeTreeData(Example()), described);
    EXPECT_EQ(DecodeTreeData(described), Example());
}
#endif

TEST(TreeFileTest, EveryVariantType_ComesBackAsItWas) {
    const ImageValue values[] = {ImageValue(),
                                 NullValue{},
                                 std::numeric_limits<std::int16_t>::min(),
                                 std::numeric_limits<std::int32_t>::min(),
                                 std::wstring(L"Größe €"),
                                 std::wstring(),
                                 true,
                                 false};
    for (const ImageValue& value : values) {
        TreeNodeRecord record = Record(L"", L"", -1, value, false);
        record.Key = value;
        record.ExpandedImage = value;
        record.SelectedImage = value;
        record.Sorted = true;
        const TreeData data = DataOf({record});
        EXPECT_EQ(DecodeTreeData(EncodeTreeData(data)), data) << static_cast<int>(value.Type());
    }
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
