#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/clipboard/ClipRecords.h"
#include "engine/tree/Node.h"

// A clip as it is dropped onto the desktop: the ordinary files that it can become, named first, read when
// they are asked for.
class ClipAsFiles {
 public:
    // None for a node that is no clip and for one whose file cannot be read.
    explicit ClipAsFiles(const Node& clip);

    struct File {
        std::wstring name;
        ClipRecord record;
    };
    const std::vector<File>& Files() const { return files_; }
    // None when it cannot be read any more or is not what it says; nobody is told.
    std::optional<std::vector<std::uint8_t>> Bytes(std::size_t index) const;

 private:
    std::wstring clipFile_;
    std::vector<File> files_;
};
