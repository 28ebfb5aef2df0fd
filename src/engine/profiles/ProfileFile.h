#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "engine/profiles/ProfileLock.h"
#include "engine/tree/CTreeViewEx.h"
#include "platform/SafeFile.h"

// Another program changed the tree data file, so that this one must not simply write over it.
enum class ProfileConflict {
    None,
    Found,   // the user is to be asked
    PutOff,  // he has been, and wants neither tree for now
};

// The tree data file of one directory, with all that this program knows of it. It is made before its tree is
// there, moves into the profile's entry when that is loaded, and keeps the directory as long as it lives.
class ProfileFile {
 public:
    // Of no directory.
    ProfileFile() = default;
    // Takes the directory if it is free; nothing is read yet.
    explicit ProfileFile(const std::wstring& directory);
    // Of a directory that is not to be taken; nothing outside is asked.
    static ProfileFile WithoutLock(const std::wstring& directory);

    // As it was given, with or without "\" at its end.
    const std::wstring& Directory() const { return directory_; }
    std::wstring Path() const;

    // Another program keeps the directory: it may only be read.
    bool HeldByOther() const { return lock_.HeldByOther(); }
    // The file that keeps the directory; none while it is not kept.
    FileHandle LockFile() const { return lock_.File(); }
    // Gives the directory up, be it for whom it may: it counts as another program's from then on.
    void LetGo() { lock_.LetGo(); }
    // True when `directory`, of that identity, is this one under another spelling.
    bool LiesIn(const std::wstring& directory, const std::wstring& identity) const;

    // Reads the file into TreeData; a save that was broken off there is finished first, unless another
    // program has the directory. False like LoadDataFromFile. What another program writes afterwards is a
    // conflict.
    bool Read(CTreeViewEx& tree);
    // Writes the profile's tree but for the subtrees of `without`. Nothing is written over what another
    // program has put there, which is a conflict then. All but that and a full disk has been told.
    CTreeViewEx::Saved Write(CTreeViewEx& tree, const Node& profile, std::span<Node* const> without = {});
    // Puts the bytes of a copy there. False, told, after a failure.
    bool Restore(const std::vector<std::uint8_t>& bytes) const;
    // The journal of the last Write is still there.
    bool IsUnfinished() const { return unfinished_; }
    // Makes the last save safe from the loss of the current. A failure is no loss (FinishSave).
    void Finish();

    // Copies the file to "nxclip.bak", or to the next such name that is free, unless one of these copies
    // holds the same already. False, told, when no copy can be made.
    bool KeepCopy() const;
    // Writes the profile's tree beside the file instead, under such a name. False, told, when that fails.
    bool KeepTree(CTreeViewEx& tree, const Node& profile) const;
    // The names of the copies, in the order in which they were made.
    std::vector<std::wstring> KeptCopies() const;

    ProfileConflict Conflict() const { return conflict_; }
    // The user wants neither tree for now.
    void PutConflictOff() { conflict_ = ProfileConflict::PutOff; }
    // Ends the conflict for this program's tree: the other one is kept as a copy and may be written over.
    // False, told, without a copy.
    bool GiveUpOthersTree();
    // Ends it for the other program's, which `read`, of the same directory, has read.
    void GoOnFrom(const ProfileFile& read);

 private:
    void NoteConflict(bool found);

    std::wstring directory_;
    ProfileLock lock_;
    // What tells the directory from every other one; empty when that is not known or it is not kept.
    std::wstring identity_;
    // The file as it was last read or written.
    FileMark mark_;
    bool unfinished_ = false;
    ProfileConflict conflict_ = ProfileConflict::None;
};
