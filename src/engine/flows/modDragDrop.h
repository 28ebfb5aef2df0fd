#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

// The private format in which a dragged node travels between tree controls, of this process or another one.

// Which node is dragged. Nobody vouches for a payload: the window handle must be compared with the own tree's
// before the index means anything.
struct DraggedNode {
    std::int32_t Window = 0;  // handle of the tree control in which the drag started; 32 bits identify it
    std::int32_t Index = 0;   // the node's index in that control's collection

    friend bool operator==(const DraggedNode&, const DraggedNode&) = default;
};

inline constexpr std::size_t kDraggedNodeSize = 8;  // two little-endian 32-bit integers

std::array<std::uint8_t, kDraggedNodeSize> DraggedNodeBytes(const DraggedNode& payload);

// A drag data object, as much as is asked of it here. Formats are 16-bit signed numbers: a registered format
// from 32768 upward is that number minus 65536.
class DragData {
 public:
    virtual ~DragData() = default;
    virtual bool Offers(std::int16_t format) = 0;
    // None when the data cannot be had.
    virtual std::optional<std::vector<std::uint8_t>> Bytes(std::int16_t format) = 0;
};

// Registers the format "NXTreeNode"; called once at start-up. Should the system refuse, no drag is
// recognised.
void RegisterOleData();
// The number that the registration returned, 0 for none, and the same as a drag data object takes it.
std::int32_t DraggedNodeFormat();
std::int16_t DraggedNodeDragFormat();

// Reads the payload from what is dragged. False, with `payload` left alone, when the format is not offered or
// holds fewer than 8 bytes.
bool GetDraggedNode(DragData& data, DraggedNode& payload);
