#pragma once

#include <cstdint>
#include <memory>

#include "engine/clipboard/CFormats.h"
#include "platform/Files.h"

// The clip at hand: what the clipboard holds, or what a clip data file holds. One object lives for the whole
// run.
class CClipBoard {
 public:
    // The current formats; none at first.
    const std::shared_ptr<CFormats>& Formats() const { return formats_; }

    // Lists every format of the open clipboard in its order, synthesised ones included. The collection
    // becomes the current one.
    std::shared_ptr<CFormats> GetClipboardFormats();

    // Reads `count` record headers from the file's position on; no data. The collection becomes the current
    // one; null for a count below 1. Every record that cannot be read is told to the user, the next one is
    // read from where the file stands then; after kMostUnreadableRecords of them the rest is given up.
    std::shared_ptr<CFormats> LoadFormatsByHandle(FileHandle file, std::int16_t count);

    // The last file that was read holds zeros where a record should begin; it ends there, told once.
    bool FileIsDamaged() const { return damaged_; }

    // A count of 32767 over a damaged file must not become as many message boxes.
    static constexpr int kMostUnreadableRecords = 10;

 private:
    std::shared_ptr<CFormats> formats_;
    bool damaged_ = false;
};
