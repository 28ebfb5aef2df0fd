#include "engine/profiles/CProfiles.h"

#include <algorithm>
#include <map>
#include <utility>

#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

std::wstring UpToZero(const std::wstring& text) {
    return text.substr(0, text.find(L'\0'));
}

bool SameSpelling(const std::wstring& a, const std::wstring& b) {
    return UpperCase(WithoutBackslash(a)) == UpperCase(WithoutBackslash(b));
}

bool Names(const std::vector<StoredProfile>& list, const std::wstring& directory) {
    const std::wstring key = UpperCase(directory);
    return std::any_of(list.begin(), list.end(),
                       [&](const StoredProfile& entry) { return UpperCase(entry.directory) == key; });
}

}  // namespace

CProfile& CProfiles::Add(const std::wstring& name, const std::wstring& directory, bool dirty, ::Node* node) {
    if (SearchDir(directory) != 0) throw RuntimeError(ErrorNumber::DuplicateKey);
    auto entry = std::make_unique<CProfile>();
    entry->Name = name;
    entry->Directory = directory;
    entry->Dirty = dirty;
    entry->Node = node;
    entry->File = ProfileFile::WithoutLock(directory);
    entries_.push_back(std::move(entry));
    return *entries_.back();
}

CProfile& CProfiles::Item(int position) const {
    if (position < 1 || position > Count()) throw RuntimeError(ErrorNumber::IndexOutOfRange);
    return *entries_[static_cast<std::size_t>(position) - 1];
}

CProfile& CProfiles::Item(const std::wstring& key) const {
    CProfile* const found = GetProfile(key);
    if (found == nullptr) throw RuntimeError(ErrorNumber::InvalidArgument);
    return *found;
}

void CProfiles::Remove(int position) {
    Item(position);  // throws when there is none
    entries_.erase(entries_.begin() + (position - 1));
}

void CProfiles::Remove(const std::wstring& key) {
    Item(key);  // throws when there is none
    Remove(SearchDir(key));
}

void CProfiles::Clear() {
    entries_.clear();
    lastStored_.clear();
}

std::vector<CProfile*> CProfiles::NewEnum() const {
    std::vector<CProfile*> all;
    for (const auto& entry : entries_)
        all.push_back(entry.get());
    return all;
}

void CProfiles::LoadRegistry() {
    Clear();
    lastStored_ = ReadStoredProfiles();
    for (const StoredProfile& entry : lastStored_)
        if (SearchDir(entry.directory) == 0) Add(entry.name, entry.directory, false, nullptr);
}

bool CProfiles::SaveRegistry() {
    std::vector<StoredProfile> own;
    for (const auto& entry : entries_)
        own.push_back({UpToZero(entry->Name), UpToZero(entry->Directory)});
    // What another instance has entered meanwhile leads to clips as well, be it stored once or again.
    std::vector<StoredProfile> list = own;
    for (const StoredProfile& entry : ReadStoredProfiles())
        if (!Names(lastStored_, entry.directory) && !Names(list, entry.directory)) list.push_back(entry);
    if (!WriteStoredProfiles(list)) return false;
    lastStored_ = std::move(own);
    return true;
}

int CProfiles::SearchDir(const std::wstring& directory) const {
    const std::wstring key = UpperCase(directory);
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const auto& entry) { return UpperCase(entry->Directory) == key; });
    return found == entries_.end() ? 0 : static_cast<int>(found - entries_.begin()) + 1;
}

CProfile* CProfiles::GetProfile(const std::wstring& directory) const {
    const int position = SearchDir(directory);
    return position >= 1 ? &Item(position) : nullptr;
}

CProfile* CProfiles::ProfileSpelled(const std::wstring& directory) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const auto& entry) {
        return SameSpelling(entry->Directory, directory);
    });
    return found != entries_.end() ? found->get() : nullptr;
}

CProfile* CProfiles::ProfileInDirectory(const std::wstring& directory) const {
    if (CProfile* const spelled = ProfileSpelled(directory)) return spelled;
    const std::wstring identity = ThePlatform().files.Identity(directory);
    for (const auto& entry : entries_) {
        if (LieIn(*entry, directory, identity)) return entry.get();
    }
    return nullptr;
}

CProfile* CProfiles::ProfileOf(const ::Node* node) const {
    for (const auto& entry : entries_) {
        if (node != nullptr && entry->Node == node) return entry.get();
    }
    return nullptr;
}

void CProfiles::OrderAsInTree(const NodeCollection& nodes) {
    std::map<const ::Node*, int> places;
    for (const ::Node* node = nodes.Root(); node != nullptr; node = node->Next()) {
        places.emplace(node, static_cast<int>(places.size()));
    }
    const auto placeOf = [&](const std::unique_ptr<CProfile>& entry) {
        const auto place = places.find(entry->Node != nullptr ? entry->Node : entry->Waiting.Get());
        return place != places.end() ? place->second : static_cast<int>(places.size());
    };
    std::stable_sort(entries_.begin(), entries_.end(),
                     [&](const auto& a, const auto& b) { return placeOf(a) < placeOf(b); });
}

bool LieIn(const CProfile& profile, const std::wstring& directory, const std::wstring& identity) {
    return SameSpelling(profile.Directory, directory) || profile.File.LiesIn(directory, identity);
}

CProfiles& Profiles() {
    static CProfiles list;
    return list;
}

void StoreProfileList() {
    if (!Profiles().SaveRegistry())
        ThePlatform().user.TellLater(L"Die Profilliste konnte nicht gespeichert werden !!!");
}
