#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/profiles/CProfile.h"
#include "engine/profiles/StoredProfileList.h"
#include "engine/tree/NodeCollection.h"

// The attached profiles in their order. Positions count from 1; the key of an entry is its directory in upper
// case, so that a directory is attached only once.
class CProfiles {
 public:
    // Appends a profile. Throws RuntimeError (DuplicateKey) when the directory is in the list. The reference
    // is good until the entry is removed.
    CProfile& Add(const std::wstring& name, const std::wstring& directory, bool dirty, ::Node* node);
    // Throw RuntimeError (IndexOutOfRange, InvalidArgument) when there is no such entry. A key is compared
    // without regard to case.
    CProfile& Item(int position) const;
    CProfile& Item(const std::wstring& key) const;
    int Count() const { return static_cast<int>(entries_.size()); }
    void Remove(int position);
    void Remove(const std::wstring& key);
    // Forgets them all, as the end of the program does: what is stored stays, whatever is saved afterwards.
    void Clear();
    // The entries as they are now, in list order: entries may be removed while they are gone through.
    std::vector<CProfile*> NewEnum() const;

    // Fills the list from the settings store. Nothing is checked there, but a directory that the store names
    // twice is taken once.
    void LoadRegistry();
    // Writes the list to the settings store, with what another instance has entered there since this one last
    // read or wrote it. False when the store keeps its old list.
    bool SaveRegistry();

    // The position of the first entry with this directory, written the same but for its case; 0 for none.
    int SearchDir(const std::wstring& directory) const;
    // The entry that SearchDir finds, or null.
    CProfile* GetProfile(const std::wstring& directory) const;
    // The same, with or without "\" at the end.
    CProfile* ProfileSpelled(const std::wstring& directory) const;
    // The entry whose files lie in this directory, however it is written and whatever drive leads there; or
    // null. To be asked before the directory is locked.
    CProfile* ProfileInDirectory(const std::wstring& directory) const;
    // The entry with this top node, or null.
    CProfile* ProfileOf(const ::Node* node) const;

    // Puts the entries in the order of their top nodes at the root level; those without a node go last.
    void OrderAsInTree(const NodeCollection& nodes);

 private:
    std::vector<std::unique_ptr<CProfile>> entries_;
    std::vector<StoredProfile> lastStored_;  // this program's own, as it last read or wrote them
};

// Whether a directory, not locked by who asks, holds the files of a profile, however it is written. The
// number that tells directories apart, `identity`, is not trusted alone: some servers give it twice.
bool LieIn(const CProfile& profile, const std::wstring& directory, const std::wstring& identity);

// The one list of the process.
CProfiles& Profiles();

// Stores the one list: whoever has changed it calls this. A failure is told later.
void StoreProfileList();
