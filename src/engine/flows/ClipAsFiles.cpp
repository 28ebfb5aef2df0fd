#include "engine/flows/ClipAsFiles.h"

#include "engine/clipboard/OrdinaryFile.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/FileNames.h"
#include "platform/RuntimeError.h"

ClipAsFiles::ClipAsFiles(const Node& clip) : clipFile_(ClipFileOf(&clip)) {
    if (clipFile_.empty()) return;
    const std::wstring safe = SafeFileName(clip.Text());
    const std::wstring name = safe.empty() ? L"Clip" : safe;
    ErrorIn([&] {
        for (const ClipRecord& record : BestOfEachKind(RecordsOf(clipFile_, AttributesOf(&clip).formatCount)))
            files_.push_back({name + OrdinaryFormOf(record)->extension, record});
    });
}

std::optional<std::vector<std::uint8_t>> ClipAsFiles::Bytes(std::size_t index) const {
    std::optional<std::vector<std::uint8_t>> bytes;
    ErrorIn([&] {
        const ClipRecord& record = files_.at(index).record;
        bytes = OrdinaryBytes(record, DataOf(clipFile_, record));
    });
    return bytes;
}
