#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

// What a save changes of a file, as the journal beside it tells. Layout: docs/formats/journal-jnl.md.

// Some bytes of a file that become others.
struct ChangedRange {
    std::size_t position = 0;
    std::vector<std::uint8_t> bytes;
    std::vector<std::uint8_t> old;  // fewer where the file ended

    std::size_t End() const { return position + bytes.size(); }
};

// The ranges that get other bytes, in their order. Outside of them the file stays as it is.
struct FileChange {
    std::size_t oldSize = 0;
    std::size_t newSize = 0;
    std::uint32_t outside = 0;  // check sum of the old file without the ranges
    std::vector<ChangedRange> ranges;
    bool knowsOld = true;  // journals of earlier versions do not tell the old bytes
};

// Leads from whatever the change left back to the old bytes; a file that became longer stays so.
FileChange Reversed(const FileChange& change);

// Looks through a file, piece by piece, for what a change has to do with it.
class FileAndChange {
 public:
    explicit FileAndChange(const FileChange& change) : change_(change), range_(change.ranges.begin()) {}
    // The next bytes of the file.
    void Add(const std::uint8_t* bytes, std::size_t size);

    // Both once the file is at its end. True when it is the one that the change was made for, and every byte
    // in the ranges is an old or a new one: a save that was broken off leaves nothing else.
    bool Fits() const;
    // True when the change is in it.
    bool Holds() const { return size_ >= change_.newSize && same_; }

 private:
    void AddInRange(const std::uint8_t* bytes, std::size_t size);

    const FileChange& change_;
    std::vector<ChangedRange>::const_iterator range_;
    std::size_t size_ = 0;
    std::uint32_t outside_ = 0;
    bool same_ = true;   // the ranges hold the new bytes as far as the file goes
    bool known_ = true;  // or old ones
};

void Apply(const FileChange& change, std::vector<std::uint8_t>& file);

std::vector<std::uint8_t> EncodeJournal(const FileChange& change);
// None for a journal that was not written to its end, whose file was not touched yet then.
std::optional<FileChange> DecodeJournal(const std::vector<std::uint8_t>& journal);

// Finds what an image changes of a file, over whose start it is written: both are gone through once, piece by
// piece.
class FileComparison {
 public:
    // The next bytes of both; of the image alone where the file has ended.
    void Add(const std::uint8_t* image, std::size_t size, const std::uint8_t* old, std::size_t oldSize);
    // The next bytes of the file, where the image has ended.
    void AddTail(const std::uint8_t* old, std::size_t size) { Same(old, size); }

    // Once both are at their ends. Without ranges there is nothing to write.
    FileChange Take();
    // The check sum of all that the file held, and of all that it is to hold.
    std::uint32_t OldSum() const { return oldSum_; }
    std::uint32_t NewSum() const { return newSum_; }

 private:
    void Same(const std::uint8_t* bytes, std::size_t size);
    void Differ(const std::uint8_t* image, std::size_t size, const std::uint8_t* old, std::size_t oldSize);
    void EndSame();

    FileChange change_;
    std::uint32_t oldSum_ = 0;
    std::uint32_t newSum_ = 0;
    // The bytes since the last range are summed once, for all three sums.
    std::uint32_t sameSum_ = 0;
    std::size_t sameSize_ = 0;
};
