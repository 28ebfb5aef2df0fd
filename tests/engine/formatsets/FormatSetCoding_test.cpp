#include "engine/formatsets/FormatSetCoding.h"

#include "engine/formatsets/FormatSetTest.h"
#include "fake/DocumentedBytes.h"
#include "fake/ErrorNumberOf.h"
#include "platform/ByteBuffer.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

using FormatSetCodingTest = FormatSetTest;

// `list` holds what was read.
int DecodeError(const Bytes& bytes, FormatSetList& list) {
    return ErrorNumberOf([&] { DecodeFormatSets(bytes, list); });
}

int DecodeError(const Bytes& bytes) {
    FormatSetList list;
    return DecodeError(bytes, list);
}

constexpr int kTooShort = static_cast<int>(ErrorNumber::FileTooShort);
constexpr int kDamaged = static_cast<int>(ErrorNumber::FileError);

FormatSet PictureSet() {
    return {L"Gemälde", L"Bitmap,DIB", {{L"Bitmap", true}, {L"DIB", false}}};
}

TEST_F(FormatSetCodingTest, Encode_GivesTheDocumentedBytes) {
    FormatSetList list;
    list.Append(PictureSet());
    const std::string example = DocumentedBytes("nxclip-nxf.md");
    const Bytes documented(example.begin(), example.end());
    EXPECT_EQ(EncodeFormatSets(list), documented);
    FormatSetList decoded;
    EXPECT_EQ(DecodeError(documented, decoded), 0);
    EXPECT_EQ(decoded, list);
}

TEST_F(FormatSetCodingTest, Decode_SetsAreTheElementsFromOneToCount) {
    const auto encoded = [](std::int16_t count, std::int32_t lowerBound, int elements) {
        ByteWriter writer;
        writer.Int16(count);
        writer.Int16(1);
        writer.Int32(elements);
        writer.Int32(lowerBound);
        for (int i = 0; i < elements; ++i) {
            writer.Text(std::to_wstring(lowerBound + i));
            writer.Text(L"");
            writer.Int16(0);
        }
        return writer.TakeImage();
    };
    FormatSetList list;
    EXPECT_EQ(DecodeError(encoded(2, -1, 6), list), 0);
    ASSERT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Item(1).Name, L"1");
    EXPECT_EQ(list.Item(2).Name, L"2");

    EXPECT_EQ(DecodeError(encoded(0, 5, 1)), 0);
    EXPECT_EQ(DecodeError({0, 0, 0, 0}), 0);  // an array that was never dimensioned
    EXPECT_EQ(DecodeError({1, 0, 0, 0}), kDamaged);
    EXPECT_EQ(DecodeError(encoded(3, 1, 2)), kDamaged);
    EXPECT_EQ(DecodeError(encoded(1, 2, 1)), kDamaged);
    EXPECT_EQ(DecodeError(encoded(-1, 1, 1)), kDamaged);
    EXPECT_EQ(DecodeError(encoded(1, std::numeric_limits<std::int32_t>::max(), 1)), kDamaged);
    EXPECT_EQ(DecodeError(encoded(1, std::numeric_limits<std::int32_t>::min(), 1)), kDamaged);
}

TEST_F(FormatSetCodingTest, Decode_TruncatedAnywhere_KeepsTheSetsReadWhole) {
    FormatSetList whole;
    whole.Append(PictureSet());
    const std::size_t first = EncodeFormatSets(whole).size();
    whole.Append(PictureSet());
    const Bytes bytes = EncodeFormatSets(whole);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        FormatSetList list;
        EXPECT_EQ(DecodeError(Bytes(bytes.begin(), bytes.begin() + size), list), kTooShort) << size;
        // With half of the file the count of sets is known to be impossible before a set is read.
        EXPECT_EQ(list.Count(), size >= first ? 1 : 0) << size;
        if (list.Count() == 1) {
            EXPECT_EQ(list.Item(1), whole.Item(1));
        }
    }
}

TEST_F(FormatSetCodingTest, Decode_HostileHeads_AreRefused) {
    const Bytes good = EncodeFormatSets(ListNamed({L"a"}));
    const auto with = [&good](std::size_t offset, std::initializer_list<std::uint8_t> bytes) {
        Bytes changed = good;
        std::copy(bytes.begin(), bytes.end(), changed.begin() + static_cast<std::ptrdiff_t>(offset));
        return DecodeError(changed);
    };
    EXPECT_EQ(with(0, {}), 0);
    // the array of sets: dimensions, then elements
    EXPECT_EQ(with(2, {2, 0}), kDamaged);
    EXPECT_EQ(with(2, {0xFF, 0xFF}), kDamaged);
    EXPECT_EQ(with(4, {0xFF, 0xFF, 0xFF, 0xFF}), kTooShort);
    EXPECT_EQ(with(4, {0x00, 0x94, 0x35, 0x77}), kTooShort);
    // the name's length, and the array of formats behind name "a" and key "fa"
    EXPECT_EQ(with(12, {0xFF, 0xFF}), kTooShort);
    EXPECT_EQ(with(19, {3, 0}), kDamaged);
    EXPECT_EQ(with(21, {0x00, 0x94, 0x35, 0x77}), kTooShort);
    EXPECT_EQ(with(21, {0x00, 0x00, 0x00, 0x80}), kTooShort);
}

}  // namespace
