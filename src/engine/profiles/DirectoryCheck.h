#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/clipboard/ClipRecords.h"

// What is wrong with the directory of a profile: its tree data file, the journal, the data file of every
// clip, and what no node leads to.

enum class Damage {
    // The whole directory.
    DirectoryMissing,
    TreeMissing,
    TreeUnreadable,  // held by another program, or the disk refuses
    TreeDamaged,
    TreeWithoutProfile,  // the first node is none, or there is no node
    // The journal.
    SaveBrokenOff,
    JournalLeft,
    JournalForeign,
    // The tree.
    DepthJumps,
    SecondTopNode,
    NodeOfNoKind,
    ProfileInProfile,
    NodeBelowClip,
    ProfileTagDamaged,
    CounterTooLow,
    ClipTagDamaged,
    ClipNumberTooHigh,
    ClipNumberTwice,
    // The data file of a clip.
    ClipFileMissing,
    ClipFileUnreadable,
    RecordsMissing,
    RecordDamaged,
    RecordEmpty,        // number 0 without a name: what a power cut leaves of data that was not on the disk
    RecordWithoutData,  // too little of it to be put back
    RecordOfObject,     // under the number of a format that has no data
    // What no node leads to.
    ClipWithoutNode,
    RestOfClip,   // no record is whole
    ZerosOfClip,  // what a power cut leaves of data that was not on the disk
    HalfCopy,
};

// What the next load of the profile does about it.
enum class Mending {
    ByLoad,       // puts it right, without a question
    AfterAnswer,  // offers to
    None,         // leaves it as it is
};
Mending MendingOf(Damage damage);

struct Finding {
    Damage damage;
    std::wstring place;  // a node as its path in the tree, a file by its name
};
// One sentence about it for the user.
std::wstring TextOf(const Finding& finding);

struct DirectoryState {
    // False when nothing can be said of the clips, since there is no tree.
    bool readable = false;
    // False when `goOn` ended it; what was found until then stands.
    bool complete = true;
    std::vector<Finding> findings;
    // What the tree holds below its profile.
    std::int32_t folders = 0;
    std::int32_t clips = 0;
    std::int32_t formats = 0;   // as the nodes count them
    std::int64_t dataSize = 0;  // bytes of the clips' data files

    bool IsWhole() const { return readable && complete && findings.empty(); }
};

// Looks at everything and changes nothing, be the profile open or not; nobody is told. `goOn` hears after
// each clip how many of them are done, and ends it by false.
DirectoryState CheckDirectory(const std::wstring& directory,
                              const std::function<bool(std::size_t done, std::size_t of)>& goOn = {});

// What is wrong with one record, and with the first of so many in a clip's data file.
std::optional<Damage> DamageOfRecord(const ClipRecord& record);
std::optional<Damage> DamageOfClipFile(const std::wstring& file, std::int16_t formatCount);

// True for what the end of the process must never leave, at whatever moment it comes: no load would put it
// right, or the tree is gone that stands in the file. What is not there at all may have been deleted, and
// zeros that no node leads to were never a clip.
bool IsLoss(Damage damage);
// The losses in a directory, each as its text.
std::vector<std::wstring> LossesIn(const std::wstring& directory);
