#include "engine/tree/TreeFile.h"

#include <algorithm>
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

// The fields of a record behind its depth.
struct RecordEnd {
    ImageValue key;
    ImageValue image;
    bool expanded = false;
    ImageValue expandedImage;
    ImageValue selectedImage;
    bool sorted = false;

    friend bool operator==(const RecordEnd&, const RecordEnd&) = default;
};

void WriteEnd(ByteWriter& writer, const RecordEnd& end) {
    WriteVariant(writer, end.key);
    WriteVariant(writer, end.image);
    writer.Flag(end.expanded);
    WriteVariant(writer, end.expandedImage);
    WriteVariant(writer, end.selectedImage);
    writer.Flag(end.sorted);
}

void WriteRecord(ByteWriter& writer, const TreeNodeRecord& record) {
    writer.Text(record.Tag);
    writer.Text(record.Text);
    writer.Int16(record.Depth);
    WriteEnd(writer, {record.Key, record.Image, record.Expanded, record.ExpandedImage, record.SelectedImage,
                      record.Sorted});
}

// A text as the bytes of its file, which most texts are kept as.
std::string_view StoredBytes(const KeptText& text, std::vector<std::uint8_t>& other) {
    const std::string_view bytes = text.Bytes();
    if (text.IsAnsi() && bytes.size() <= kLongestStoredText) return bytes;
    ByteWriter writer;
    writer.Text(text.Text());
    other = writer.TakeImage();
    constexpr std::size_t kLength = 2;
    return {reinterpret_cast<const char*>(other.data()) + kLength, other.size() - kLength};
}

// Writes the fields of nodes, which bear no key. There are many nodes at every save: each goes into the image
// at once, and the bytes behind its depth are encoded only where they differ from those of the node before.
class NodeWriter {
 public:
    explicit NodeWriter(ByteWriter& writer) : writer_(writer) {}

    void Write(const Node& node, int depth) {
        const std::string_view tag = StoredBytes(node.TagAsKept(), otherTag_);
        const std::string_view text = StoredBytes(node.TextAsKept(), otherText_);
        SetEnd(
            {{}, node.Image(), node.Expanded(), node.ExpandedImage(), node.SelectedImage(), node.Sorted()});
        constexpr std::size_t kNumbers = 6;
        std::uint8_t* to = writer_.Room(kNumbers + tag.size() + text.size() + end_.size());
        for (const std::string_view stored : {tag, text}) {
            to = PutNumber(to, stored.size());
            to = std::copy(stored.begin(), stored.end(), to);
        }
        to = PutNumber(to, static_cast<std::size_t>(depth));
        std::copy(end_.begin(), end_.end(), to);
    }

 private:
    static std::uint8_t* PutNumber(std::uint8_t* to, std::size_t number) {
        *to++ = static_cast<std::uint8_t>(number);
        *to++ = static_cast<std::uint8_t>(number >> 8);
        return to;
    }
    void SetEnd(const RecordEnd& end) {
        if (!end_.empty() && end == lastEnd_) return;
        ByteWriter writer;
        WriteEnd(writer, end);
        end_ = writer.TakeImage();
        lastEnd_ = end;
    }

    ByteWriter& writer_;
    RecordEnd lastEnd_;
    std::vector<std::uint8_t> end_;
    std::vector<std::uint8_t> otherTag_, otherText_;
};

// Calls `use` with each node that goes into the file, and its depth, in tree order.
template <typename Use>
void ForEachStored(const StoredNodes& stored, const Use& use) {
    std::vector<const Node*> without(stored.without.begin(), stored.without.end());
    std::sort(without.begin(), without.end());
    TreeWalk<const Node> walk(stored.top);
    while (stored.andAllBehind ? walk.Current() != nullptr : walk.InSubtree()) {
        if (!without.empty() && std::binary_search(without.begin(), without.end(), walk.Current())) {
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
    NodeWriter nodes(writer);
    std::int32_t count = 0;
    ForEachStored(stored, [&](const Node& node, int depth) {
        if (depth > std::numeric_limits<std::int16_t>::max()) throw RuntimeError(ErrorNumber::Overflow);
        nodes.Write(node, depth);
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
