#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Files.h"

// Files that are saved whole and in place, again and again, so that neither a failing write nor the end of
// the process or of the current at any moment leaves anything between the old content and the new one. What
// is about to be written stands in a journal beside the file first. Layout: docs/formats/journal-jnl.md.

// Beside the tree data file "nxclip.nxp" stands "nxclip.jnl"; beside any other file its whole name with
// ".jnl", so that no two files of a directory share a journal.
std::wstring JournalPathOf(const std::wstring& path);

// False only when there is surely no such file: one of which it cannot be told is neither written over nor
// passed by.
bool MayBeThere(const std::wstring& path);

// True when there is the file, or the journal of the save that was to make it.
bool SafeFileExists(const std::wstring& path);

// What the journal beside a file is to it.
enum class JournalState {
    None,     // there is none
    Pending,  // of a save that was broken off: the file is not whole without it
    Written,  // the file holds what it says; it goes at the next idle moment or load
    Foreign,  // it was not written to its end, or made for another file: it means nothing
};
// Nothing is written. Throws RuntimeError when file or journal cannot be read.
JournalState StateOfJournal(const std::wstring& path);

// All bytes of the file, as they are once the save in its journal is finished. Nothing is written: another
// program may be in the middle of that save. Throws RuntimeError with the cause when something cannot be
// read.
std::vector<std::uint8_t> ReadSafeFile(const std::wstring& path);

// What a file held at one moment, to notice later that another program changed it meanwhile. It tells
// contents apart, not times: within one tick of its clock a file can be written twice.
class FileMark {
 public:
    // Of nothing that is known.
    FileMark() = default;
    FileMark(std::size_t size, std::uint32_t checkSum) : known_(true), size_(size), checkSum_(checkSum) {}
    // Reads the file; nothing is known of one that is not there or cannot be read.
    static FileMark Of(const std::wstring& path);
    // Of a file that holds these bytes.
    static FileMark OfBytes(const std::vector<std::uint8_t>& bytes);

    bool IsKnown() const { return known_; }
    friend bool operator==(const FileMark&, const FileMark&) = default;

 private:
    bool known_ = false;
    std::size_t size_ = 0;
    std::uint32_t checkSum_ = 0;
};

// Writes `image` over the start of the file, which is made when missing and never shortened: what was longer
// keeps its tail. The file is read once, and only the bytes that differ are written. The journal stays until
// FinishSave or the next save. Throws RuntimeError after a failure; the file is as it was then, or its
// journal leads back there.
void WriteSafeFile(const std::wstring& path, const std::vector<std::uint8_t>& image);
// Writes nothing and returns false when the file is known to hold something else than `mark` says. Otherwise
// the mark is of what the file holds now; of nothing known after a failure that may have touched it.
bool WriteSafeFile(const std::wstring& path, const std::vector<std::uint8_t>& image, FileMark& mark);

// Copies the file to "<stem>.bak", or to the next such name that is free ("<stem>2.bak" and so on), unless
// one of these copies holds the same already. Throws RuntimeError when no copy can be made.
struct KeptCopy {
    std::wstring path;
    bool isNew = false;
};
KeptCopy KeepCopy(const std::wstring& path, const std::wstring& stem);
// The first of these names that is free; throws RuntimeError when there is none.
std::wstring FreeKeptPath(const std::wstring& stem);
// The names of the copies that are there, in the order in which they were made.
std::vector<std::wstring> KeptCopies(const std::wstring& stem);

// Removes the file and its journal, so that none is made from the other again. False when the file stays; the
// port's last error says why then.
bool RemoveSafeFile(const std::wstring& path);

// Puts what the last save wrote, or an interrupted one was to write, onto the disk for good and removes its
// journal: before a load, and in the moments when nobody waits. True when nothing is left to do; a failure is
// no loss, for reading and saving take the journal into account.
bool FinishSave(const std::wstring& path);
