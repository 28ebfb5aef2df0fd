#include "engine/views/PreviewData.h"

#include "engine/clipboard/ClipboardTest.h"

namespace {

class PreviewDataTest : public ClipboardTest {};

TEST_F(PreviewDataTest, Read_ReadsNoMoreThanItIsAskedFor) {
    const auto formats = Headers(RecordBytes(kTextFormat, "Text", "0123456789"), 1);
    const PreviewData data(kClip, formats->Item(1));
    const auto part = data.Read(2, 3);
    ASSERT_TRUE(part);
    EXPECT_EQ(std::string(part->All().begin(), part->All().end()), "234");
    EXPECT_EQ(data.Read(8, 100)->size, 2u);
    EXPECT_FALSE(data.Read(11, 1));

    fake.files.SetBytes(kClip, RecordBytes(kTextFormat, "Text", "012345678"));
    EXPECT_FALSE(data.Read(0, 3)) << "the file holds less than the header says";
    fake.files.Remove(kClip);
    EXPECT_FALSE(data.Read(0, 3));
    EXPECT_EQ(fake.ledger.Owned(ResourceKind::File), 0);
}

}  // namespace
