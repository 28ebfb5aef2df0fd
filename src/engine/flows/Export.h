#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "engine/clipboard/ClipRecords.h"
#include "engine/flows/ExportIndex.h"
#include "engine/flows/LongWork.h"
#include "engine/tree/Node.h"
#include "platform/FileNames.h"

// Clips as ordinary files: each clip becomes a file for each kind of content it has, each folder and profile
// a directory with the page index.html to look through it. Nothing that stands there is replaced.
//
// What is to be written is noted at the start: the nodes may change or go meanwhile.
class Export : public LongWork {
 public:
    // The nodes, each with what is below it, go into the directory, which is made if only it is missing.
    Export(std::span<const Node* const> nodes, std::wstring directory);

    // Writes the next folder or clip.
    bool Step() override;
    // The page tells that there was more.
    void Stop() override;

    std::size_t Done() const override { return next_; }
    std::size_t Count() const override { return items_.size(); }

    // What became of it.
    std::size_t Files() const { return files_; }
    // Clips that hold nothing that any file could.
    std::size_t WithoutForm() const { return withoutForm_; }
    // Of what could not be written or read. A full disk ends the export.
    const std::vector<std::wstring>& Failures() const override { return failures_; }
    std::wstring Summary() const override;
    // The first file or directory that was made; empty for none.
    const std::wstring& FirstMade() const { return firstMade_; }

 private:
    struct Item {
        std::size_t depth = 0;  // 0 for the nodes that were given
        bool isClip = false;
        std::wstring name;
        std::wstring info;
        std::wstring captured;
        std::wstring clipFile;
        std::int16_t formatCount = 0;
    };
    // A directory that is being filled.
    struct Level {
        std::wstring directory;
        std::wstring fromTop;  // from the topmost one that was made, with "/" at its end
        UniqueNames names;
    };

    void Note(const Node& top);
    void WriteFolder(const Item& item);
    void WriteClip(const Item& item);
    void WriteForms(const Item& item, const std::vector<ClipRecord>& records, ExportedClip& shown);
    bool WriteFile(const std::wstring& path, const std::vector<std::uint8_t>& bytes);
    std::wstring FreeName(const std::wstring& wanted, const std::wstring& fallback,
                          const std::vector<std::wstring>& extensions);
    void LeaveTo(std::size_t depth);
    void Failed(const std::wstring& what);
    void Made(const std::wstring& path);

    std::vector<Item> items_;
    std::size_t next_ = 0;
    std::vector<Level> levels_;  // 0 is the directory that was given
    ExportIndex index_;
    std::size_t files_ = 0;
    std::size_t withoutForm_ = 0;
    std::vector<std::wstring> failures_;
    std::wstring firstMade_;
    bool diskIsFull_ = false;
};
