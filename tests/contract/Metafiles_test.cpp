#include "platform/Metafiles.h"

#include <limits>

#include "contract/ContractTest.h"
#include "fake/FakeMetafiles.h"

namespace {

using MetafileContract = ContractTest;

// `bits` with the 32-bit number at `offset` replaced.
std::string With(std::string bits, std::size_t offset, std::uint32_t number) {
    for (int i = 0; i < 4; ++i)
        bits[offset + static_cast<std::size_t>(i)] = static_cast<char>(number >> (8 * i));
    return bits;
}

}  // namespace

TEST_F(MetafileContract, Create_GivesItsBitsBack) {
    for (const std::string& content : {std::string("abcd"), std::string(5000, '\xFE')}) {
        const std::string bits = MetafileBitsWith(content), enhancedBits = EnhancedMetafileBitsWith(content);
        // What stands behind the end that the header names does not count.
        const std::string longer = enhancedBits + "tail";
        const std::int32_t metafile = metafiles.Create(bits.data(), bits.size());
        const DataHandle enhanced = metafiles.CreateEnhanced(longer.data(), longer.size());
        ASSERT_EQ(metafiles.BitsSize(metafile), bits.size());
        ASSERT_EQ(metafiles.EnhancedBitsSize(enhanced), enhancedBits.size());
        std::string copy(bits.size(), '\0'), enhancedCopy(enhancedBits.size(), '\0');
        EXPECT_FALSE(metafiles.GetBits(metafile, copy.data(), copy.size() - 1));
        EXPECT_TRUE(metafiles.GetBits(metafile, copy.data(), copy.size()));
        EXPECT_FALSE(metafiles.GetEnhancedBits(enhanced, enhancedCopy.data(), enhancedCopy.size() - 1));
        EXPECT_TRUE(metafiles.GetEnhancedBits(enhanced, enhancedCopy.data(), enhancedCopy.size()));
        EXPECT_EQ(copy, bits);
        EXPECT_EQ(enhancedCopy, enhancedBits);
        metafiles.Delete(metafile);
        metafiles.DeleteEnhanced(enhanced);
    }
}

TEST_F(MetafileContract, Create_RefusesWhatIsNoMetafile) {
    const std::string bits = MetafileBitsWith("content");
    EXPECT_EQ(metafiles.Create(nullptr, 0), 0);
    EXPECT_EQ(metafiles.Create(bits.data(), bits.size() - 1), 0);
    const std::string junk(bits.size(), 'j');
    EXPECT_EQ(metafiles.Create(junk.data(), junk.size()), 0);
    EXPECT_EQ(metafiles.BitsSize(0), 0u);
    metafiles.Delete(0);
}

TEST_F(MetafileContract, CreateEnhanced_RefusesWhatIsNoEnhancedMetafile) {
    constexpr std::size_t kHeaderSize = 4, kSignature = 40, kWholeSize = 48;
    const std::string bits = EnhancedMetafileBitsWith("content");
    const auto refused = [&](const std::string& damaged) {
        return metafiles.CreateEnhanced(damaged.data(), damaged.size()) == DataHandle::None;
    };
    EXPECT_EQ(metafiles.CreateEnhanced(nullptr, 0), DataHandle::None);
    EXPECT_TRUE(refused(bits.substr(0, 87)));
    EXPECT_TRUE(refused(With(bits, 0, 2)));
    EXPECT_TRUE(refused(With(bits, kSignature, 0x12345678)));
    EXPECT_TRUE(refused(With(bits, kHeaderSize, 4)));
    // The header claims more than there is.
    EXPECT_TRUE(refused(With(bits, kWholeSize, static_cast<std::uint32_t>(bits.size()) + 4)));
    EXPECT_TRUE(refused(With(bits, kWholeSize, std::numeric_limits<std::uint32_t>::max())));
    EXPECT_EQ(metafiles.EnhancedBitsSize(DataHandle::None), 0u);
    metafiles.DeleteEnhanced(DataHandle::None);
}

TEST_F(MetafileContract, Picture_SurvivesItsBlock) {
    std::string block(metafiles.PictureBlockSize(), '\0');
    EXPECT_GE(block.size(), 16u);
    const std::string bits = MetafileBitsWith("x");
    const std::int32_t metafile = metafiles.Create(bits.data(), bits.size());
    metafiles.WritePicture({8, -2, std::numeric_limits<std::int32_t>::max(), metafile}, block.data());
    const MetafilePicture picture = metafiles.ReadPicture(block.data());
    EXPECT_EQ(picture.mappingMode, 8);
    EXPECT_EQ(picture.xExtent, -2);
    EXPECT_EQ(metafiles.BitsSize(picture.metafile), bits.size());
    metafiles.Delete(picture.metafile);
}
