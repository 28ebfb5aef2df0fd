#include "engine/profiles/CProfiles.h"

#include <algorithm>
#include <map>
#include <utility>

#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kSection = L"Profiles";

// What the store says is not trusted further than this.
constexpr std::int32_t kMostListed = 0x7FFF;

std::wstring NameKey(int position) {
    return L"Name" + NumberText(position);
}

std::wstring FileKey(int position) {
    return L"File" + NumberText(position);
}

// The number of entries in the store. Where it cannot be read, the entries that are there without a gap are
// counted: the list is written back at the end of the run, and profiles must not get lost by that.
std::int32_t StoredCount(SettingsPort& settings) {
    const auto count = ParseInt32(settings.Read(kSection, L"Count", L"0"));
    if (count) return std::min(*count, kMostListed);
    std::int32_t found = 0;
    while (found < kMostListed && !settings.Read(kSection, FileKey(found + 1), L"").empty())
        ++found;
    return found;
}

bool IsThere(SettingsPort& settings, const std::wstring& key) {
    const wchar_t* const absent = L"\x1";  // no name and no directory
    return settings.Read(kSection, key, absent) != absent;
}

// The last one first: one that stays must not hide those behind it from the next time.
void RemoveEntriesFrom(SettingsPort& settings, int first) {
    int end = first;
    while (IsThere(settings, NameKey(end)) || IsThere(settings, FileKey(end)))
        ++end;
    while (--end >= first)
        if (!settings.DeleteValue(kSection, FileKey(end)) || !settings.DeleteValue(kSection, NameKey(end)))
            return;
}

}  // namespace

CProfile& CProfiles::Add(const std::wstring& name, const std::wstring& directory, bool dirty, ::Node* node) {
    if (SearchDir(directory) != 0) throw RuntimeError(ErrorNumber::DuplicateKey);
    auto entry = std::make_unique<CProfile>();
    entry->Name = name;
    entry->Directory = directory;
    entry->Dirty = dirty;
    entry->Node = node;
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

std::vector<CProfile*> CProfiles::NewEnum() const {
    std::vector<CProfile*> all;
    for (const auto& entry : entries_)
        all.push_back(entry.get());
    return all;
}

void CProfiles::LoadRegistry() {
    Clear();
    SettingsPort& settings = ThePlatform().settings;
    const std::int32_t count = StoredCount(settings);
    for (int i = 1; i <= count; ++i) {
        const std::wstring name = settings.Read(kSection, NameKey(i), L"");
        const std::wstring directory = settings.Read(kSection, FileKey(i), L"");
        if (SearchDir(directory) == 0) Add(name, directory, false, nullptr);
    }
}

// The end of the process at any moment leaves every profile in the store that is in the old list and in the
// new one: the new list is first written behind the old one, then over it, and what is too much goes last.
void CProfiles::SaveRegistry() const {
    SettingsPort& settings = ThePlatform().settings;
    const std::int32_t stored = std::max(StoredCount(settings), 0);
    const int behind = std::max(stored, Count());
    if (!IsStored(settings, stored) && behind <= kMostListed - Count()) WriteFrom(settings, behind + 1);
    if (WriteFrom(settings, 1)) RemoveEntriesFrom(settings, Count() + 1);
}

bool CProfiles::IsStored(SettingsPort& settings, std::int32_t stored) const {
    int position = 0;
    const auto stands = [&](const auto& entry) {
        ++position;
        return settings.Read(kSection, NameKey(position), L"") == entry->Name &&
               settings.Read(kSection, FileKey(position), L"") == entry->Directory;
    };
    return stored == Count() && std::all_of(entries_.begin(), entries_.end(), stands);
}

// Writes the entries as those from `first` on, and then that the list ends with them. A write that fails
// skips only itself, but what stands behind stays in the list then, and the result is false.
bool CProfiles::WriteFrom(SettingsPort& settings, int first) const {
    bool whole = true;
    int position = first;
    for (const auto& entry : entries_) {
        whole &= settings.Write(kSection, NameKey(position), entry->Name);
        whole &= settings.Write(kSection, FileKey(position), entry->Directory);
        ++position;
    }
    return whole && settings.Write(kSection, L"Count", NumberText(position - 1));
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

CProfile* CProfiles::ProfileInDirectory(const std::wstring& directory) const {
    const std::wstring wanted = UpperCase(WithoutBackslash(directory));
    for (const auto& entry : entries_) {
        if (UpperCase(WithoutBackslash(entry->Directory)) == wanted) return entry.get();
    }
    const std::wstring identity = ThePlatform().files.Identity(directory);
    for (const auto& entry : entries_) {
        if (!identity.empty() && entry->Identity == identity) return entry.get();
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
        const auto place = places.find(entry->Node);
        return place != places.end() ? place->second : static_cast<int>(places.size());
    };
    std::stable_sort(entries_.begin(), entries_.end(),
                     [&](const auto& a, const auto& b) { return placeOf(a) < placeOf(b); });
}

CProfiles& Profiles() {
    static CProfiles list;
    return list;
}
