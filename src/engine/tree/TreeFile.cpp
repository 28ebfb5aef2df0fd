#include "engine/tree/TreeFile.h"

#include <type_traits>
#include <utility>
#include <variant>

#include "engine/tree/TreeFileLayout.h"
#include "platform/ByteBuffer.h"
#include "platform/RuntimeError.h"
#include "platform/VisitVariant.h"

namespace {

void WriteType(ByteWriter& writer, VariantType type) {
    writer.UInt16(static_cast<std::uint16_t>(type));
}

struct VariantWriter {
    ByteWriter& writer;

    void operator()(std::monostate) const { WriteType(writer, VariantType::Empty); }
    void operator()(NullValue) const { WriteType(writer, VariantType::Null); }
    void operator()(std::int16_t value) const {
        WriteType(writer, VariantType::Int16);
        writer.Int16(value);
    }
    void operator()(std::int32_t value) const {
        WriteType(writer, VariantType::Int32);
        writer.Int32(value);
    }
    void operator()(const std::wstring& value) const {
        WriteType(writer, VariantType::Text);
        writer.Text(value);
    }
    void operator()(bool value) const {
        WriteType(writer, VariantType::Boolean);
        writer.Flag(value);
    }
};

void WriteVariant(ByteWriter& writer, const ImageValue& value) {
    VisitVariant(value, VariantWriter{writer});
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
    writer.Int32(data.Count);
    writer.Int16(kTreeFileDimensions);
    writer.Int32(data.Count + 1);
    writer.Int32(kTreeFileLowerBound);
    WriteRecord(writer, TreeNodeRecord{});
    for (std::size_t i = 1; i <= static_cast<std::size_t>(data.Count); ++i)
        WriteRecord(writer, data.Nodes[i]);
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
