#include "engine/profiles/StoredProfileList.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kSection = L"Profiles";
constexpr const wchar_t* kCountKey = L"Count";
// A list whose entries are being written, whole in one value: that alone is written in one piece. While it is
// there it is the list.
constexpr const wchar_t* kChangeKey = L"Change";

// What the store says is not trusted further than this.
constexpr std::int32_t kMostListed = 0x7FFF;

std::wstring NameKey(int position) {
    return L"Name" + NumberText(position);
}

std::wstring FileKey(int position) {
    return L"File" + NumberText(position);
}

SettingsPort& Settings() {
    return ThePlatform().settings;
}

// The number of entries in the store. Where it cannot be read, the entries that are there without a gap are
// counted: what is read is written back one day, and profiles must not get lost by that.
std::int32_t StoredCount() {
    const auto count = ParseInt32(Settings().Read(kSection, kCountKey, L"0"));
    if (count) return std::min(*count, kMostListed);
    std::int32_t found = 0;
    while (found < kMostListed && !Settings().Read(kSection, FileKey(found + 1), L"").empty())
        ++found;
    return found;
}

std::vector<StoredProfile> ReadEntries() {
    std::vector<StoredProfile> entries;
    const std::int32_t count = StoredCount();
    for (int i = 1; i <= count; ++i)
        entries.push_back(
            {Settings().Read(kSection, NameKey(i), L""), Settings().Read(kSection, FileKey(i), L"")});
    return entries;
}

// Each text with its length in front: a name may hold every character.
std::wstring ChangeText(const std::vector<StoredProfile>& list) {
    const auto counted = [](const std::wstring& text) {
        return NumberText(static_cast<std::int32_t>(text.size())) + L":" + text;
    };
    std::wstring change = L"=";
    for (const StoredProfile& entry : list)
        change += counted(entry.name) + counted(entry.directory);
    return change;
}

std::optional<std::wstring> TakeCounted(std::wstring& rest) {
    const std::size_t colon = rest.find(L':');
    if (colon == std::wstring::npos) return std::nullopt;
    const auto length = ParseInt32(rest.substr(0, colon));
    rest.erase(0, colon + 1);
    if (!length || *length < 0 || static_cast<std::size_t>(*length) > rest.size()) return std::nullopt;
    const auto size = static_cast<std::size_t>(*length);
    const std::wstring text = rest.substr(0, size);
    rest.erase(0, size);
    return text;
}

// None when there is none, or none that this program wrote.
std::optional<std::vector<StoredProfile>> ReadChange() {
    std::wstring rest = Settings().Read(kSection, kChangeKey, L"");
    if (!rest.starts_with(L"=")) return std::nullopt;
    rest.erase(0, 1);
    std::vector<StoredProfile> list;
    while (!rest.empty()) {
        const auto name = TakeCounted(rest);
        const auto directory = name ? TakeCounted(rest) : std::nullopt;
        if (!directory) return std::nullopt;
        list.push_back({*name, *directory});
    }
    return list;
}

bool IsThere(const std::wstring& key) {
    const wchar_t* const absent = L"\x1";  // no name and no directory
    return Settings().Read(kSection, key, absent) != absent;
}

bool WriteEntries(const std::vector<StoredProfile>& list) {
    int position = 0;
    for (const StoredProfile& entry : list) {
        ++position;
        if (!Settings().Write(kSection, NameKey(position), entry.name) ||
            !Settings().Write(kSection, FileKey(position), entry.directory))
            return false;
    }
    return Settings().Write(kSection, kCountKey, NumberText(position));
}

// The last one first: one that stays must not hide those behind it from the next time.
bool RemoveEntriesFrom(int first) {
    int end = first;
    while (IsThere(NameKey(end)) || IsThere(FileKey(end)))
        ++end;
    while (--end >= first)
        if (!Settings().DeleteValue(kSection, FileKey(end)) ||
            !Settings().DeleteValue(kSection, NameKey(end)))
            return false;
    return true;
}

}  // namespace

std::vector<StoredProfile> ReadStoredProfiles() {
    auto change = ReadChange();
    return change ? std::move(*change) : ReadEntries();
}

bool WriteStoredProfiles(const std::vector<StoredProfile>& list) {
    if (!IsThere(kChangeKey) && IsThere(kCountKey) && ReadEntries() == list) return true;
    if (!Settings().Write(kSection, kChangeKey, ChangeText(list))) return false;
    if (WriteEntries(list) && RemoveEntriesFrom(static_cast<int>(list.size()) + 1))
        Settings().DeleteValue(kSection, kChangeKey);
    return true;
}
