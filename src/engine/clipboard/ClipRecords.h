#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Clipboard.h"

// The records of a clip's data file for those who read them one by one, away from any clipboard. Layout:
// docs/formats/clip-nxc.md.

struct ClipRecord {
    FormatNumber id = 0;
    std::wstring name;
    std::int32_t offset = 0;  // of the data, from the start of the file
    std::int32_t size = 0;    // of the data, in bytes
};

class CFormat;
ClipRecord RecordOf(const CFormat& format);

// The whole records among the first `count`, up to the first damaged one. Throws RuntimeError when the file
// cannot be opened.
std::vector<ClipRecord> RecordsOf(const std::wstring& file, std::int16_t count);

// A record's data as it stands in the file, at most so many bytes of it. Throws RuntimeError when it cannot
// be read.
std::vector<std::uint8_t> DataOf(const std::wstring& file, const ClipRecord& record,
                                 std::int32_t most = INT32_MAX);

// Writes a record at the end of the bytes, which become a clip's data file. Throws RuntimeError (Overflow)
// where its sizes do not fit.
void AppendRecord(std::vector<std::uint8_t>& file, FormatNumber id, const std::wstring& name,
                  const std::vector<std::uint8_t>& data);
