#include "engine/tree/TreeFile.h"

#include <limits>
#include <utility>

#include "engine/tree/NodeCollection.h"
#include "engine/tree/TreeFileLayout.h"
#include "engine/tree/TreeWalk.h"
#include "platform/ByteBuffer.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

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

void WriteText(ByteWriter& writer, const KeptText& text) {
    const std::string_view bytes = text.Bytes();
    if (!text.IsAnsi() || bytes.size() > kLongestStoredText) return writer.Text(text.Text());
    writer.UInt16(static_cast<std::uint16_t>(bytes.size()));
    writer.Bytes(bytes.data(), bytes.size());
}

// The fields of a node, which bears no key.
void WriteNode(ByteWriter& writer, const Node& node, int depth) {
    WriteText(writer, node.TagAsKept());
    WriteText(writer, node.TextAsKept());
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

// Reads records from an image. A picture's name is mostly that of the node before: it is not looked up again.
class RecordReader {
 public:
    explicit RecordReader(ByteReader& reader) : reader_(reader) {}

    KeptRecord Next() {
        KeptRecord record;
        record.tag = reader_.AnsiText();
        record.text = reader_.AnsiText();
        record.depth = reader_.Int16();
        record.key = Variant();
        record.image = Variant();
        record.expanded = reader_.Flag();
        record.expandedImage = Variant();
        record.selectedImage = Variant();
        record.sorted = reader_.Flag();
        return record;
    }

 private:
    ImageValue Variant() {
        switch (static_cast<VariantType>(reader_.UInt16())) {
            case VariantType::Empty:
                return {};
            case VariantType::Null:
                return NullValue{};
            case VariantType::Int16:
                return reader_.Int16();
            case VariantType::Int32:
                return reader_.Int32();
            case VariantType::Text:
                return Key(reader_.AnsiText());
            case VariantType::Boolean:
                return reader_.Flag();
        }
        throw RuntimeError(ErrorNumber::TypeMismatch);
    }
    ImageValue Key(std::string_view name) {
        if (lastKey_.IsEmpty() || name != lastName_) {
            lastName_ = name;
            lastKey_ = TextFromAnsi(name);
        }
        return lastKey_;
    }

    ByteReader& reader_;
    std::string_view lastName_;
    ImageValue lastKey_;
};

TreeNodeRecord RecordOf(const KeptRecord& kept) {
    return {.Tag = TextFromAnsi(kept.tag),
            .Text = TextFromAnsi(kept.text),
            .Depth = kept.depth,
            .Key = kept.key,
            .Image = kept.image,
            .Expanded = kept.expanded,
            .ExpandedImage = kept.expandedImage,
            .SelectedImage = kept.selectedImage,
            .Sorted = kept.sorted};
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
    constexpr std::size_t kUsualRecordSize = 96;
    ByteWriter writer;
    if (stored.top != nullptr)
        writer.Reserve(static_cast<std::size_t>(stored.top->Owner().Count()) * kUsualRecordSize);
    WriteFront(writer, 0);
    std::int32_t count = 0;
    ForEachStored(stored, [&](const Node& node, int depth) {
        if (depth > std::numeric_limits<std::int16_t>::max()) throw RuntimeError(ErrorNumber::Overflow);
        WriteNode(writer, node, depth);
        ++count;
    });
    writer.PutInt32(kCountPosition, count);
    writer.PutInt32(kElementCountPosition, count + 1);
    return writer.TakeImage();
}

std::int32_t ReadTreeImage(const std::vector<std::uint8_t>& image,
                           const std::function<bool(const KeptRecord&)>& use) {
    ByteReader reader(image);
    const std::int32_t count = reader.Int32();
    if (reader.Int16() != kTreeFileDimensions) throw RuntimeError(ErrorNumber::TypeMismatch);
    const auto elements = static_cast<std::int64_t>(reader.Count32(kSmallestTreeRecordSize));
    const std::int64_t first = reader.Int32();
    // Other bounds than our own are understood as long as the records 1 to count lie between them.
    if (count < 0 || (count > 0 && (first > 1 || first + elements <= count)))
        throw RuntimeError(ErrorNumber::IndexOutOfRange);

    RecordReader records(reader);
    for (std::int64_t i = first; i < first + elements; ++i) {
        const KeptRecord record = records.Next();
        if (i >= 1 && i <= count && use && !use(record)) break;
    }
    return count;
}

TreeData DecodeTreeData(const std::vector<std::uint8_t>& image) {
    TreeData data;
    data.Count = ReadTreeImage(image, [&](const KeptRecord& record) {
        data.Nodes.push_back(RecordOf(record));
        return true;
    });
    return data;
}
