#include "engine/formatsets/FormatSetCoding.h"

#include "platform/ByteBuffer.h"
#include "platform/RuntimeError.h"

namespace {

// The least that a stored element takes: the lengths of its texts and its array's dimension count or flag.
constexpr std::size_t kLeastSet = 6;
constexpr std::size_t kLeastEntry = 4;

// The head of a stored array, before its elements. An array that was never dimensioned has no head.
struct ArrayHead {
    std::size_t elements = 0;
    std::int32_t lowerBound = 0;
};

void WriteArrayHead(ByteWriter& writer, std::size_t elements, std::int32_t lowerBound) {
    writer.Int16(1);
    writer.Int32(static_cast<std::int32_t>(elements));
    writer.Int32(lowerBound);
}

void WriteSet(ByteWriter& writer, const FormatSet& set) {
    writer.Text(set.Name);
    writer.Text(set.Key);
    if (set.Formats.empty()) {
        writer.Int16(0);
        return;
    }
    WriteArrayHead(writer, set.Formats.size(), 1);
    for (const FormatSetEntry& entry : set.Formats) {
        writer.Text(entry.Name);
        writer.Flag(entry.Save);
    }
}

[[noreturn]] void ThrowDamaged() {
    throw RuntimeError(ErrorNumber::FileError, L"Die Formatsatzdatei ist beschädigt.");
}

ArrayHead ReadArrayHead(ByteReader& reader, std::size_t leastElement) {
    const std::int16_t dimensions = reader.Int16();
    if (dimensions == 0) return {};
    if (dimensions != 1) ThrowDamaged();
    ArrayHead head;
    head.elements = reader.Count32(leastElement);
    head.lowerBound = reader.Int32();
    return head;
}

FormatSet ReadSet(ByteReader& reader) {
    FormatSet set;
    set.Name = reader.Text();
    set.Key = reader.Text();
    const ArrayHead head = ReadArrayHead(reader, kLeastEntry);
    for (std::size_t i = 0; i < head.elements; ++i) {
        FormatSetEntry entry;
        entry.Name = reader.Text();
        entry.Save = reader.Flag();
        set.Formats.push_back(std::move(entry));
    }
    return set;
}

}  // namespace

std::vector<std::uint8_t> EncodeFormatSets(const FormatSetList& list) {
    ByteWriter writer;
    writer.Int16(list.Count());
    if (list.Count() == 0) {
        // An empty list is stored as one empty element with the index 0, which is none of its sets.
        WriteArrayHead(writer, 1, 0);
        WriteSet(writer, {});
        return writer.TakeImage();
    }
    WriteArrayHead(writer, static_cast<std::size_t>(list.Count()), 1);
    for (int index = 1; index <= list.Count(); ++index) {
        WriteSet(writer, list.Item(index));
    }
    return writer.TakeImage();
}

void DecodeFormatSets(const std::vector<std::uint8_t>& bytes, FormatSetList& list) {
    ByteReader reader(bytes);
    const int count = reader.Int16();
    const ArrayHead head = ReadArrayHead(reader, kLeastSet);
    if (count < 0 || (count > 0 && head.lowerBound > 1)) ThrowDamaged();
    // The sets are the elements with the indexes 1 to count, wherever the array begins and ends.
    int read = 0;
    for (std::size_t i = 0; i < head.elements && read < count; ++i) {
        FormatSet set = ReadSet(reader);
        if (head.lowerBound + static_cast<std::int64_t>(i) < 1) continue;
        list.Append(std::move(set));
        ++read;
    }
    if (read < count) ThrowDamaged();
}
