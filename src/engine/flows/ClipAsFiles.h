#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/clipboard/ClipRecords.h"
#include "engine/flows/ChosenNodes.h"
#include "platform/FileNames.h"

// Clips as they are dropped onto the desktop: the ordinary files that they can become, named first, read when
// they are asked for.
class ClipAsFiles {
 public:
    // None for a node that is no clip and for one whose file cannot be read.
    explicit ClipAsFiles(ChosenNodes clips);

    struct File {
        std::wstring name;  // each another one
        std::wstring clipFile;
        ClipRecord record;
    };
    const std::vector<File>& Files() const { return files_; }
    // None when it cannot be read any more or is not what it says; nobody is told.
    std::optional<std::vector<std::uint8_t>> Bytes(std::size_t index) const;

 private:
    void Note(const Node& clip, UniqueNames& names);

    std::vector<File> files_;
};
