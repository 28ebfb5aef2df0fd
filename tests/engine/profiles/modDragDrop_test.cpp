#include "engine/profiles/modDragDrop.h"

#include <gtest/gtest.h>

#include "fake/FakePlatformTest.h"

namespace {

class FakeDragData : public DragData {
 public:
    bool Offers(std::int16_t asked) override { return asked == format; }
    std::optional<std::vector<std::uint8_t>> Bytes(std::int16_t asked) override {
        return asked == format ? bytes : std::nullopt;
    }

    std::int16_t format = 0;
    std::optional<std::vector<std::uint8_t>> bytes;
};

using ModDragDropTest = FakePlatformTest;

TEST_F(ModDragDropTest, GetDraggedNode_ReadsTheFirst8Bytes) {
    RegisterOleData();
    ASSERT_NE(DraggedNodeFormat(), 0);
    EXPECT_EQ(fake.clipboard.RegisteredName(DraggedNodeFormat(), 100), "NXTreeNode");
    EXPECT_EQ(static_cast<std::uint16_t>(DraggedNodeDragFormat()), DraggedNodeFormat());

    const DraggedNode sent{-17, 100'000};
    const auto bytes = DraggedNodeBytes(sent);
    FakeDragData data;
    data.format = DraggedNodeDragFormat();
    data.bytes.emplace(bytes.begin(), bytes.end());
    data.bytes->push_back(0xFF);
    DraggedNode received;
    EXPECT_TRUE(GetDraggedNode(data, received));
    EXPECT_EQ(received, sent);
}

TEST_F(ModDragDropTest, GetDraggedNode_LeavesThePayloadAloneWithoutGoodData) {
    RegisterOleData();
    const DraggedNode before{1, 2};
    DraggedNode payload = before;
    FakeDragData data;
    EXPECT_FALSE(GetDraggedNode(data, payload));  // another format
    data.format = DraggedNodeDragFormat();
    EXPECT_FALSE(GetDraggedNode(data, payload));  // offered, but it cannot be had
    data.bytes.emplace(7);
    EXPECT_FALSE(GetDraggedNode(data, payload));  // too short
    EXPECT_EQ(payload, before);
}

}  // namespace
