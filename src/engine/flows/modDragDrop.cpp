#include "engine/flows/modDragDrop.h"

#include <algorithm>

#include "engine/process/modProt.h"
#include "platform/ByteBuffer.h"
#include "platform/Platform.h"

namespace {

std::int32_t format = 0;

}  // namespace

std::array<std::uint8_t, kDraggedNodeSize> DraggedNodeBytes(const DraggedNode& payload) {
    ByteWriter writer;
    writer.Int32(payload.Window);
    writer.Int32(payload.Index);
    std::array<std::uint8_t, kDraggedNodeSize> bytes;
    std::copy_n(writer.Image().begin(), bytes.size(), bytes.begin());
    return bytes;
}

void RegisterOleData() {
    LogDebug(L"RegisterOleData ...");
    format = ThePlatform().clipboard.RegisterName("NXTreeNode");
}

std::int32_t DraggedNodeFormat() {
    return format;
}

std::int16_t DraggedNodeDragFormat() {
    return static_cast<std::int16_t>(format);
}

bool GetDraggedNode(DragData& data, DraggedNode& payload) {
    if (format == 0 || !data.Offers(DraggedNodeDragFormat())) return false;
    const auto bytes = data.Bytes(DraggedNodeDragFormat());
    if (!bytes || bytes->size() < kDraggedNodeSize) return false;
    ByteReader reader(*bytes);
    payload.Window = reader.Int32();
    payload.Index = reader.Int32();
    return true;
}
