// The reader of the format-set file on any bytes: it never holds more than the file can, tells of an error
// exactly once, and what it read comes back the same when it is saved and loaded. What it could not read is
// kept.

#include <cstddef>
#include <cstdint>
#include <string>

#include "Require.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/process/modMain.h"
#include "fake/FakePlatform.h"

namespace {

// The least that the list takes on disk.
std::size_t StoredSize(const FormatSetList& list) {
    std::size_t size = 0;
    for (int index = 1; index <= list.Count(); ++index) {
        const FormatSet& set = list.Item(index);
        size += 6 + set.Name.size() + set.Key.size();
        for (const FormatSetEntry& entry : set.Formats)
            size += 4 + entry.Name.size();
    }
    return size;
}

bool HoldsInSomeFile(FakePlatform& fake, const std::string& bytes) {
    for (const std::wstring& file : fake.files.AllFiles())
        if (fake.files.Bytes(file) == bytes) return true;
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FakePlatform fake;
    InitFormatSets();
    FormatSetFile = L"C:\\given.nxf";
    const std::string given(reinterpret_cast<const char*>(data), size);
    fake.files.SetBytes(FormatSetFile, given);
    const bool loaded = LoadFormatSets();
    Require(fake.user.messages.size() == (loaded ? 0u : 1u));
    Require(!FormatSetsChanged);
    if (loaded) Require(StoredSize(FormatSets()) <= size);

    const FormatSetList list = FormatSets();
    if (loaded) FormatSetFile = L"C:\\saved.nxf";
    FormatSetsChanged = true;
    Require(SaveFormatSets() && LoadFormatSets());
    Require(FormatSets() == list);
    Require(HoldsInSomeFile(fake, given));
    return 0;
}
