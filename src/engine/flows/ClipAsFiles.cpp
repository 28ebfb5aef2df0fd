#include "engine/flows/ClipAsFiles.h"

#include "engine/clipboard/OrdinaryFile.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/FileNames.h"
#include "platform/RuntimeError.h"

ClipAsFiles::ClipAsFiles(ChosenNodes clips) {
    UniqueNames names;
    for (const Node* const clip : clips)
        Note(*clip, names);
}

void ClipAsFiles::Note(const Node& clip, UniqueNames& names) {
    const std::wstring clipFile = ClipFileOf(&clip);
    if (clipFile.empty()) return;
    const std::wstring safe = SafeFileName(clip.Text());
    const std::wstring name =
        names.Next(safe.empty() ? L"Clip" : safe, [](const std::wstring&) { return false; });
    ErrorIn([&] {
        for (const ClipRecord& record : BestOfEachKind(RecordsOf(clipFile, AttributesOf(&clip).formatCount)))
            files_.push_back({name + OrdinaryFormOf(record)->extension, clipFile, record});
    });
}

std::optional<std::vector<std::uint8_t>> ClipAsFiles::Bytes(std::size_t index) const {
    std::optional<std::vector<std::uint8_t>> bytes;
    ErrorIn([&] {
        const File& file = files_.at(index);
        bytes = OrdinaryBytes(file.record, DataOf(file.clipFile, file.record));
    });
    return bytes;
}
