#include "engine/tree/TreeFile.h"

#include <limits>
#include <utility>

#include "engine/tree/TreeFileLayout.h"
#include "engine/tree/TreeWalk.h"
#include "platform/ByteBuffer.h"
#include "platform/RuntimeError.h"

namespace {

void WriteVariant(ByteWriter& writer, const ImageValue& value) {
    const auto write = [&](VariantType type) { writer.UInt16(static_cast<std::uint16_t>(type)); };
    switch (value.Type()) {
        case ImageValue::Kind::Empty:
            return write(VariantType::Empty);
        case ImageValue::Kind::Null:
            return write(VariantType::Null);
        case ImageValue::Kind::Int16:
            write(VariantType::Int16);
            return writer.Int16(static_cast<std::int16_t>(value.Number()));
        case ImageValue::Kind::Int32:
            write(VariantType::Int32);
            return writer.Int32(value.Number());
        case ImageValue::Kind::Key:
            write(VariantType::Text);
            return writer.Text(value.Key());
        case ImageValue::Kind::Boolean:
            write(VariantType::Boolean);
            return writer.Flag(value.Number() != 0);
    }
}

ImageValue ReadVariant(ByteReader& reader) {
    switch (static_cast<VariantType>(reader.UInt16())) {
        case VariantType::Empty:
            return {};
        case VariantType::Null:
            return NullValue{};
        case VariantType::Int16:
            return reader.Int16();
        case VariantType::Int32:
            return reader.Int32();
        case VariantType::Text:
            return reader.Text();
        case VariantType::Boolean:
            return reader.Flag();
    }
    throw RuntimeError(ErrorNumber::TypeMismatch);
}

void WriteRecord(ByteWriter& writer, const TreeNodeRecord& record) {
    writer.Text(record.Tag);
    writer.Text(record.Text);
    writer.Int16(record.Depth);
    WriteVariant(writer, record.Key);
    WriteVariant(writer, record.Image);
    writer.Flag(record.Expanded);
    WriteVariant(writer, record.ExpandedImage);
    WriteVariant(writer, record.SelectedImage);
    writer.Flag(record.Sorted);
}

// The fields of a node, which bears no key.
void WriteNode(ByteWriter& writer, const Node& node, int depth) {
    writer.Text(node.Tag());
    writer.Text(node.Text());
    writer.Int16(static_cast<std::int16_t>(depth));
    WriteVariant(writer, {});
    WriteVariant(writer, node.Image());
    writer.Flag(node.Expanded());
    WriteVariant(writer, node.ExpandedImage());
    WriteVariant(writer, node.SelectedImage());
    writer.Flag(node.Sorted());
}

// Calls `use` with each node that goes into the file, and its depth, in tree order.
template <typename Use>
void ForEachStored(const StoredNodes& stored, const Use& use) {
    TreeWalk<const Node> walk(stored.top);
    while (stored.andAllBehind ? walk.Current() != nullptr : walk.InSubtree()) {
        if (walk.Current() == stored.without) {
            walk.StepOver();
            continue;
        }
        use(*walk.Current(), walk.Depth());
        walk.Step();
    }
}

void WriteFront(ByteWriter& writer, std::int32_t count) {
    writer.Int32(count);
    writer.Int16(kTreeFileDimensions);
    writer.Int32(count + 1);
    writer.Int32(kTreeFileLowerBound);
    WriteRecord(writer, TreeNodeRecord{});
}

TreeNodeRecord ReadRecord(ByteReader& reader) {
    TreeNodeRecord record;
    record.Tag = reader.Text();
    record.Text = reader.Text();
    record.Depth = reader.Int16();
    record.Key = ReadVariant(reader);
    record.Image = ReadVariant(reader);
    record.Expanded = reader.Flag();
    record.ExpandedImage = ReadVariant(reader);
    record.SelectedImage = ReadVariant(reader);
    record.Sorted = reader.Flag();
    return record;
}

}  // namespace

std::vector<std::uint8_t> EncodeTreeData(const TreeData& data) {
    if (data.Count < 0 || data.Nodes.size() <= static_cast<std::size_t>(data.Count))
        throw RuntimeError(ErrorNumber::IndexOutOfRange);
    ByteWriter writer;
    WriteFront(writer, data.Count);
    for (std::size_t i = 1; i <= static_cast<std::size_t>(data.Count); ++i)
        WriteRecord(writer, data.Nodes[i]);
    return writer.TakeImage();
}

std::vector<std::uint8_t> EncodeNodes(const StoredNodes& stored) {
    // Room for the longest picture key in use.
    constexpr std::size_t kRoomForPicture = 16;
    std::int32_t count = 0;
    std::size_t size = kTreeFileHeaderSize + kSmallestTreeRecordSize;
    ForEachStored(stored, [&](const Node& node, int depth) {
        if (depth > std::numeric_limits<std::int16_t>::max()) throw RuntimeError(ErrorNumber::Overflow);
        size += kSmallestTreeRecordSize + kRoomForPicture + node.Tag().size() + node.Text().size();
        ++count;
    });
    ByteWriter writer;
    writer.Reserve(size);
    WriteFront(writer, count);
    ForEachStored(stored, [&](const Node& node, int depth) { WriteNode(writer, node, depth); });
    return writer.TakeImage();
}

TreeData DecodeTreeData(const std::vector<std::uint8_t>& image) {
    ByteReader reader(image);
    const std::int32_t count = reader.Int32();
    if (reader.Int16() != kTreeFileDimensions) throw RuntimeError(ErrorNumber::TypeMismatch);
    const auto elements = static_cast<std::int64_t>(reader.Count32(kSmallestTreeRecordSize));
    const std::int64_t first = reader.Int32();
    // Other bounds than our own are understood as long as the records 1 to count lie between them.
    if (count < 0 || (count > 0 && (first > 1 || first + elements <= count)))
        throw RuntimeError(ErrorNumber::IndexOutOfRange);

    TreeData data;
    data.Count = count;
    data.Nodes.resize(static_cast<std::size_t>(count) + 1);
    for (std::int64_t i = first; i < first + elements; ++i) {
        TreeNodeRecord record = ReadRecord(reader);
        if (i >= 1 && i <= count) data.Nodes[static_cast<std::size_t>(i)] = std::move(record);
    }
    return data;
}
