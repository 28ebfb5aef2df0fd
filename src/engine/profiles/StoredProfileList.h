#pragma once

#include <string>
#include <vector>

// The profile list as it stands in the settings store.

struct StoredProfile {
    std::wstring name;
    std::wstring directory;

    friend bool operator==(const StoredProfile&, const StoredProfile&) = default;
};

// What the store says, unchecked.
std::vector<StoredProfile> ReadStoredProfiles();

// Makes `list` the list in the store. The end of the process at any moment, or a write that fails, leaves the
// old list or the new one. False when it is still the old one.
bool WriteStoredProfiles(const std::vector<StoredProfile>& list);
