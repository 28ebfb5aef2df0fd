#include "engine/flows/modDragDrop.h"

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

TEST_F(ModDragDropTest, GetDraggedNode_ReadsTheFirst8BytesOrLeavesThePayloadAlone) {
    RegisterOleData();
    EXPECT_EQ(fake.clipboard.RegisteredName(DraggedNodeFormat(), 100), "NXTreeNode");
    const DraggedNode before{1, 2}, sent{-17, 100'000};
    DraggedNode payload = before;
    FakeDragData data;
    EXPECT_FALSE(GetDraggedNode(data, payload));  // another format
    data.format = DraggedNodeDragFormat();
    EXPECT_FALSE(GetDraggedNode(data, payload));  // offered, but it cannot be had
    data.bytes.emplace(7);
    EXPECT_FALSE(GetDraggedNode(data, payload));  // too short
    EXPECT_EQ(payload, before);
    const auto bytes = DraggedNodeBytes(sent);
    data.bytes->assign(bytes.begin(), bytes.end());
    data.bytes->push_back(0xFF);
    EXPECT_TRUE(GetDraggedNode(data, payload));
    EXPECT_EQ(payload, sent);
}

}  // namespace
