#include "engine/formatsets/modFormatSet.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "engine/clipboard/CFormats.h"
#include "engine/formatsets/FormatSetCoding.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"

bool FormatSetsChanged = false;

namespace {

std::wstring Joined(const std::vector<std::wstring>& parts) {
    std::wstring joined;
    for (const std::wstring& part : parts) {
        if (&part != &parts.front()) joined += L',';
        joined += part;
    }
    return joined;
}

std::vector<std::wstring> Split(std::wstring_view joined) {
    std::vector<std::wstring> parts;
    for (;;) {
        const std::size_t comma = joined.find(L',');
        parts.emplace_back(joined.substr(0, comma));
        if (comma == std::wstring_view::npos) return parts;
        joined.remove_prefix(comma + 1);
    }
}

// The file is there and was not understood: what the list holds must not simply take its place.
bool fileUnread = false;

// None when the file was read, or is not there: the list is the default one then.
std::optional<RuntimeError> ReadFormatSets() {
    FormatSets().Clear();
    FinishSave(FormatSetFile);
    const auto error = ErrorIn([] { DecodeFormatSets(ReadSafeFile(FormatSetFile), FormatSets()); });
    const int number = error ? error->Number() : 0;
    const bool isMissing = number == static_cast<int>(ErrorNumber::FileNotFound) ||
                           number == static_cast<int>(ErrorNumber::PathError);
    fileUnread = error && !isMissing;
    if (fileUnread) return error;
    FormatSetsChanged = false;
    if (isMissing) InitDefaultFormatSets();
    return std::nullopt;
}

bool KeepUnreadFile() {
    return Succeeds([] {
        const KeptCopy kept = KeepCopy(FormatSetFile, FormatSetFile);
        if (kept.isNew)
            ThePlatform().user.Tell(L"Die Datei\r\n" + FormatSetFile +
                                    L"\r\nkonnte nicht gelesen werden. Bevor die Formatsätze neu gespeichert "
                                    L"werden, wurde sie als\r\n" +
                                    kept.path + L"\r\naufbewahrt.");
    });
}

FormatSet MakeSet(const std::wstring& name, std::vector<FormatSetEntry> entries) {
    FormatSet set;
    set.Name = name;
    set.Key = BuildFormatSetKey(entries);
    set.Formats = std::move(entries);
    return set;
}

}  // namespace

FormatSetList& FormatSets() {
    static FormatSetList list;
    return list;
}

void InitFormatSets() {
    FormatSets().Clear();
    FormatSetsChanged = fileUnread = false;
}

bool LoadFormatSets() {
    const std::optional<RuntimeError> error = ReadFormatSets();
    if (error) TellError(*error);
    return !error;
}

bool LoadFormatSetsAgain() {
    return !fileUnread || FormatSetsChanged || !ReadFormatSets();
}

bool SaveFormatSets() {
    if (!FormatSetsChanged) return true;
    if (fileUnread && !KeepUnreadFile()) return false;
    const bool saved = Succeeds([] { WriteSafeFile(FormatSetFile, EncodeFormatSets(FormatSets())); });
    if (saved) FinishSave(FormatSetFile);
    fileUnread = fileUnread && !saved;
    return saved;
}

void InitDefaultFormatSets() {
    FormatSets().Clear();
    // The name is deliberate: users know the set by it.
    FormatSets().Append(MakeSet(L"Paintprush-Bild", {{L"Bitmap", true}, {L"DIB", false}}));
    FormatSets().Append(
        MakeSet(L"Text", {{L"Text", true}, {L"OemText", true}, {L"Unicode", true}, {L"<\?\?\?>", false}}));
    FormatSetsChanged = true;
}

void AddRecommendedFormatSets() {
    // Bitmaps live in the memory of their program; what they show is in the other formats.
    const FormatSet offers[] = {
        MakeSet(L"Nur Text", {{L"LOCALE", true}, {L"OemText", true}, {L"Text", true}, {L"Unicode", true}}),
        MakeSet(L"Text mit Gestaltung", {{L"LOCALE", true},
                                         {L"OemText", true},
                                         {L"Rich Text Format", true},
                                         {L"Text", true},
                                         {L"Unicode", true}}),
        MakeSet(L"Text aus dem Browser", {{L"HTML Format", true},
                                          {L"LOCALE", true},
                                          {L"OemText", true},
                                          {L"Text", true},
                                          {L"Unicode", true}}),
        MakeSet(L"Bild", {{L"Bitmap", false}, {L"DIB", true}, {L"MAX", true}}),
        MakeSet(L"Bild", {{L"Bitmap", false}, {L"DIB", true}, {L"MAX", true}, {L"PNG", true}}),
    };
    for (const FormatSet& offer : offers) {
        if (FormatSets().HasKey(offer.Key) || FormatSets().Count() == FormatSetList::kMostSets) continue;
        FormatSets().Append(offer);
        FormatSetsChanged = true;
    }
}

int AddFormatSet(FormatSetList& list, const CFormats* formats, const std::wstring& name) {
    if (formats == nullptr || list.Count() == FormatSetList::kMostSets) return -1;
    std::vector<FormatSetEntry> entries;
    for (const CFormat& format : *formats) {
        entries.push_back({format.FormatName, true});
    }
    list.Append(MakeSet(name, std::move(entries)));
    FormatSetsChanged = true;
    return list.Count();
}

bool DeleteFormatSet(FormatSetList& list, int index) {
    if (!list.Has(index)) return false;
    list.Remove(index);
    FormatSetsChanged = true;
    return true;
}

int FindFormatSet(const FormatSetList& list, const CFormats* formats) {
    if (formats == nullptr) return 0;
    const std::wstring key = FormatsKey(*formats);
    for (int index = 1; index <= list.Count(); ++index) {
        if (list.Item(index).Key == key) return index;
    }
    return 0;
}

bool GetFormatSaveFlag(int index, const std::wstring& formatName) {
    if (!FormatSets().Has(index)) return false;
    const std::vector<FormatSetEntry>& entries = FormatSets().Item(index).Formats;
    const auto entry = std::find_if(entries.begin(), entries.end(),
                                    [&](const FormatSetEntry& each) { return each.Name == formatName; });
    return entry != entries.end() && entry->Save;
}

bool IsKeptUnknownFormat(const std::wstring& formatName) {
    const int mask = Options().UnknownFormats;
    if ((mask & 255) == 255) return true;
    // Bit 16 ("Ole") is deliberately without an effect of its own: it only completes the mask 255.
    return ((mask & 1) != 0 && formatName == L"Text") ||
           ((mask & 2) != 0 && formatName == L"Rich Text Format") ||
           ((mask & 4) != 0 && formatName == L"DIB") || ((mask & 8) != 0 && formatName == L"Bitmap");
}

std::wstring BuildFormatSetKey(std::vector<FormatSetEntry>& entries) {
    std::stable_sort(entries.begin(), entries.end(),
                     [](const FormatSetEntry& a, const FormatSetEntry& b) { return a.Name < b.Name; });
    std::vector<std::wstring> names;
    for (const FormatSetEntry& entry : entries) {
        names.push_back(entry.Name);
    }
    return Joined(names);
}

std::wstring FormatsKey(const CFormats& formats) {
    std::vector<std::wstring> names;
    for (const CFormat& format : formats) {
        names.push_back(format.FormatName);
    }
    if (names.size() < 2) return Joined(names);
    // Deliberate: the names are taken apart at every comma before they are sorted, while a set's key keeps a
    // name with a comma whole. Such a clipboard is not recognised; the rule for unknown formats decides on
    // it.
    std::vector<std::wstring> parts = Split(Joined(names));
    std::sort(parts.begin(), parts.end());
    return Joined(parts);
}
