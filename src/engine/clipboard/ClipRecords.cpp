#include "engine/clipboard/ClipRecords.h"

#include <algorithm>
#include <limits>

#include "engine/clipboard/CFormat.h"
#include "engine/clipboard/ClipFileLayout.h"
#include "engine/clipboard/modFileIO.h"
#include "platform/ByteBuffer.h"
#include "platform/FileBytes.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

FileOwner OpenToRead(const std::wstring& file) {
    FileOwner opened(ThePlatform().files.Open(file, FileUse::Read));
    if (!opened.IsSet()) throw FileErrorOf(ThePlatform().files.LastError(), file);
    return opened;
}

}  // namespace

ClipRecord RecordOf(const CFormat& format) {
    return {format.FormatId, format.FormatName, format.DataOffset, format.DataSize};
}

std::vector<ClipRecord> RecordsOf(const std::wstring& file, std::int16_t count) {
    const FileOwner opened = OpenToRead(file);
    std::vector<ClipRecord> records;
    CFormat format;
    for (int i = 0; i < count && format.LoadFromFile(opened.Get(), false); ++i)
        records.push_back(RecordOf(format));
    return records;
}

std::vector<std::uint8_t> DataOf(const std::wstring& file, const ClipRecord& record, std::int32_t most) {
    const FileOwner opened = OpenToRead(file);
    const auto size = static_cast<std::uint32_t>(std::clamp(record.size, 0, std::max(most, 0)));
    const auto end = ThePlatform().files.Size(opened.Get());
    // The file may be another one by now.
    if (record.offset < 0 || !end || *end - record.offset < size)
        throw RuntimeError(ErrorNumber::FileTooShort);
    std::vector<std::uint8_t> data(size);
    if (!SeekClipFile(opened.Get(), record.offset)) throw FileErrorOf(ThePlatform().files.LastError(), file);
    const auto read = ThePlatform().files.Read(opened.Get(), data.data(), size);
    if (!read) throw FileErrorOf(ThePlatform().files.LastError(), file);
    if (*read != size) throw RuntimeError(ErrorNumber::FileTooShort);
    return data;
}

void AppendRecord(std::vector<std::uint8_t>& file, FormatNumber id, const std::wstring& name,
                  const std::vector<std::uint8_t>& data) {
    const std::string ansiName = AnsiFromText(name);
    const std::size_t whole = file.size() + kRecordIdSize + kRecordNameLengthSize + ansiName.size() +
                              kRecordDataSizeSize + data.size();
    if (ansiName.size() > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max()) ||
        static_cast<std::int64_t>(whole) > kLongestClipFile)
        throw RuntimeError(ErrorNumber::Overflow);
    ByteWriter writer;
    writer.Int32(id);
    writer.Int16(static_cast<std::int16_t>(ansiName.size()));
    writer.Bytes(ansiName.data(), ansiName.size());
    writer.Int32(static_cast<std::int32_t>(data.size()));
    file.insert(file.end(), writer.Image().begin(), writer.Image().end());
    file.insert(file.end(), data.begin(), data.end());
}
