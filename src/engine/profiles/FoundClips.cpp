#include "engine/profiles/FoundClips.h"

#include <algorithm>

#include "engine/clipboard/CFormat.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/FileBytes.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kFolder = L"Wiedergefunden";

// The highest number that was offered and not wanted, by directory.
constexpr const wchar_t* kSection = L"FoundClips";

// The number in the name of a clip data file, written as the program writes it; 0 for any other name.
std::int32_t NumberInName(const std::wstring& name) {
    const std::wstring upper = UpperCase(name);
    if (!upper.starts_with(L"C") || !upper.ends_with(L".NXC")) return 0;
    const std::int32_t number = ParseInt32(upper.substr(1, upper.size() - 5)).value_or(0);
    return number > 0 && upper == L"C" + NumberText(number) + L".NXC" ? number : 0;
}

// A copy takes its name when it is complete; until then it bears this one.
bool IsHalfCopy(const std::wstring& name) {
    const std::size_t mark = name.rfind(L".~");
    if (mark == std::wstring::npos || !ParseInt32(name.substr(mark + 2))) return false;
    const std::wstring target = name.substr(0, mark);
    return NumberInName(target) != 0 || UpperCase(target).starts_with(L"NXCLIP");
}

std::int16_t WholeRecords(const std::wstring& file) {
    const FileOwner scope(ThePlatform().files.Open(file, FileUse::Read));
    std::int16_t count = 0;
    if (!scope.IsSet()) return count;
    CFormat format;
    while (count < INT16_MAX && format.LoadFromFile(scope.Get(), false))
        ++count;
    return count;
}

// In their order.
std::vector<std::int32_t> NumbersOf(const Node* profile) {
    std::vector<std::int32_t> numbers;
    for (TreeWalk walk(profile); walk.InSubtree(); walk.Step())
        numbers.push_back(ClipNumberOf(walk.Current()));
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

std::wstring OfferKey(const std::wstring& directory) {
    return UpperCase(WithoutBackslash(directory));
}

Node& FolderForFound(NodeCollection& nodes, Node& profile) {
    for (Node* child = profile.FirstChild(); child != nullptr; child = child->Next())
        if (IsStructureNode(child) && child->Text() == kFolder) return *child;
    Node& folder = nodes.Add(&profile, NodeRelation::Child, kFolder, std::wstring(L"Structure"));
    folder.SetTag(MakeStructureTag(L""));
    return folder;
}

}  // namespace

std::vector<FoundClip> FindClips(const std::wstring& directory, const Node* profile) {
    FilePort& files = ThePlatform().files;
    const std::vector<std::int32_t> known = NumbersOf(profile);
    std::vector<FoundClip> found;
    for (const std::wstring& name : files.List(JoinDirectory(directory, L"*"))) {
        if (IsHalfCopy(name)) files.Remove(JoinDirectory(directory, name));
        const std::int32_t number = NumberInName(name);
        if (number == 0 || std::binary_search(known.begin(), known.end(), number)) continue;
        const std::wstring file = JoinDirectory(directory, name);
        const auto readable = FileOwner(files.Open(file, FileUse::Read)).IsSet();
        const std::int16_t records = WholeRecords(file);
        if (records > 0)
            found.push_back({number, records});
        else if (readable && profile != nullptr)
            files.Remove(file);
    }
    std::sort(found.begin(), found.end(),
              [](const FoundClip& a, const FoundClip& b) { return a.number < b.number; });
    return found;
}

void AddFoundClips(NodeCollection& nodes, Node& container, const std::vector<FoundClip>& clips,
                   const std::wstring& directory) {
    const BulkChangeScope bulk(nodes);
    for (const FoundClip& clip : clips) {
        const auto captured = ThePlatform().files.ChangeTime(ClipFilePath(directory, clip.number));
        Node& node = nodes.Add(&container, NodeRelation::Child, L"Clip " + NumberText(clip.number),
                               std::wstring(L"Clip"));
        node.SetTag(MakeClipTag(clip.number, clip.formatCount,
                                ThePlatform().clock.DateText(captured.value_or(0)), {}));
    }
}

void OfferFoundClips(CTreeViewEx& tree, Node& profile) {
    SettingsPort& settings = ThePlatform().settings;
    const std::wstring directory = GetProfileDirectory(&profile);
    std::vector<FoundClip> clips = FindClips(directory, &profile);
    const std::int32_t offered = ParseInt32(settings.Read(kSection, OfferKey(directory), L"0")).value_or(0);
    std::erase_if(clips, [&](const FoundClip& clip) { return clip.number <= offered; });
    if (clips.empty()) return;
    if (!ThePlatform().user.Ask(
            NumberText(static_cast<int>(clips.size())) +
                L" Clips ohne Eintrag gefunden. Sollen sie in den Ordner 'Wiedergefunden' "
                L"aufgenommen werden ?",
            profile.Text(), false)) {
        settings.Write(kSection, OfferKey(directory), NumberText(clips.back().number));
        return;
    }
    AddFoundClips(*tree.TreeView(), FolderForFound(*tree.TreeView(), profile), clips, directory);
    RaiseClipCounter(profile, clips.back().number);
    SetProfileChanged(&profile);
    SaveAllProfiles(tree);
}
