#include "engine/profiles/FoundClips.h"

#include <algorithm>
#include <array>

#include "engine/clipboard/CFormat.h"
#include "engine/clipboard/ClipFileLayout.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/ClipFileNames.h"
#include "engine/profiles/DeletedFolder.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/RefusedClips.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/ByteBuffer.h"
#include "platform/FileBytes.h"
#include "platform/FlushLater.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kFolder = L"Wiedergefunden";

// The number in a file's name, 0 for none and for one that no load would trust.
std::int32_t NumberInName(const std::wstring& name) {
    const std::int32_t number = ClipNumberInName(name);
    return IsTrustedClipNumber(number) ? number : 0;
}

enum class Content { Records, Beginning, Unknown };

struct ClipFile {
    Content content = Content::Unknown;
    std::int16_t records = 0;  // whole ones
};

// The system allows names of formats no longer than this, of two bytes a letter at most.
constexpr std::size_t kLongestFormatName = 2 * 255;
constexpr std::size_t kFixedFront = kRecordIdSize + kRecordNameLengthSize;
constexpr std::size_t kLongestHeader = kFixedFront + kLongestFormatName + kRecordDataSizeSize;

// A record whose header is right as far as it is there, and that reaches behind the end of the file.
bool IsBrokenOff(const std::uint8_t* front, std::size_t frontSize, std::int64_t fileSize) {
    if (frontSize < kFixedFront) return true;
    ByteReader header(front, frontSize);
    const std::int32_t id = header.Int32();
    const std::int16_t nameLength = header.Int16();
    if (id == 0 || nameLength < 0 || static_cast<std::size_t>(nameLength) > kLongestFormatName) return false;
    const auto nameSize = static_cast<std::size_t>(nameLength);
    const std::uint8_t* const name = front + kFixedFront;
    const auto isControl = [](std::uint8_t letter) { return letter < ' '; };
    if (std::any_of(name, name + std::min(nameSize, header.Remaining()), isControl)) return false;
    if (header.Remaining() < nameSize + kRecordDataSizeSize) return true;
    header.Skip(nameSize);
    const std::int32_t dataSize = header.Int32();
    const auto dataAt = static_cast<std::int64_t>(kFixedFront + nameSize + kRecordDataSizeSize);
    return dataSize >= 0 && dataAt + dataSize > fileSize;
}

ClipFile LookAt(const std::wstring& path) {
    FilePort& files = ThePlatform().files;
    const FileOwner file(files.Open(path, FileUse::Read));
    const auto size = file.IsSet() ? files.Size(file.Get()) : std::nullopt;
    std::array<std::uint8_t, kLongestHeader> front;
    const auto read = size ? files.Read(file.Get(), front.data(), front.size()) : std::nullopt;
    const bool readWhole =
        read && *read == std::min<std::int64_t>(*size, static_cast<std::int64_t>(front.size()));
    if (!readWhole) return {};
    if (IsBrokenOff(front.data(), *read, *size)) return {Content::Beginning};
    ClipFile found;
    CFormat format;
    if (!files.Seek(file.Get(), 0)) return {};
    // Zeros are what the loss of the current leaves of a file.
    const auto isFormat = [&] { return format.FormatId != 0 || !format.FormatName.empty(); };
    while (found.records < INT16_MAX && format.LoadFromFile(file.Get(), false) && isFormat())
        ++found.records;
    if (found.records > 0) found.content = Content::Records;
    return found;
}

// The numbers of the clips below a profile, sorted.
std::vector<std::int32_t> NumbersOf(const Node* profile) {
    std::vector<std::int32_t> numbers;
    for (TreeWalk walk(profile); walk.InSubtree(); walk.Step())
        numbers.push_back(ClipNumberOf(walk.Current()));
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

Node& FolderForFound(NodeCollection& nodes, Node& profile) {
    for (Node* child = profile.FirstChild(); child != nullptr; child = child->Next())
        if (IsStructureNode(child) && child->Text() == kFolder) return *child;
    Node& folder = AddInFrontOfDeleted(nodes, profile, kFolder, L"Structure");
    folder.SetTag(MakeStructureTag(L""));
    return folder;
}

void RemoveHalfCopies(const std::wstring& directory) {
    FilePort& files = ThePlatform().files;
    for (const wchar_t* const pattern : {L"C*.nxc.~*", L"nxclip*.~*"}) {
        for (const std::wstring& name : files.List(JoinDirectory(directory, pattern)))
            if (IsHalfCopyName(name)) files.Remove(JoinDirectory(directory, name));
    }
}

// True when they were taken.
bool Offer(CTreeViewEx& tree, Node& profile, const std::vector<FoundClip>& clips) {
    const NodeRef asked(&profile);
    const bool wanted = ThePlatform().user.Ask(NumberText(static_cast<int>(clips.size())) +
                                                   L" Clips ohne Eintrag gefunden. Sollen sie in den Ordner "
                                                   L"'Wiedergefunden' aufgenommen werden ?",
                                               profile.Text(), false);
    if (!wanted || asked.Get() == nullptr) return false;
    AddFoundClips(*tree.TreeView(), FolderForFound(*tree.TreeView(), profile), clips);
    RaiseClipCounter(profile, clips.back().number);
    SetProfileChanged(&profile);
    SaveAllProfiles(tree);
    return true;
}

}  // namespace

std::vector<FoundClip> FindClips(const std::wstring& directory, const Node* profile) {
    FilePort& files = ThePlatform().files;
    RemoveHalfCopies(directory);
    const std::vector<std::int32_t> known = NumbersOf(profile);
    std::vector<FoundClip> found;
    for (const std::wstring& name : files.List(JoinDirectory(directory, L"C*.nxc"))) {
        const std::int32_t number = NumberInName(name);
        if (number == 0 || std::binary_search(known.begin(), known.end(), number)) continue;
        const std::wstring file = JoinDirectory(directory, name);
        const ClipFile clip = LookAt(file);
        if (clip.content == Content::Records)
            found.push_back({number, clip.records, files.ChangeTime(file).value_or(0)});
        else if (clip.content == Content::Beginning && profile != nullptr)
            files.Remove(file);
    }
    std::sort(found.begin(), found.end(),
              [](const FoundClip& a, const FoundClip& b) { return a.number < b.number; });
    return found;
}

void AddFoundClips(NodeCollection& nodes, Node& container, const std::vector<FoundClip>& clips) {
    const BulkChangeScope bulk(nodes);
    for (const FoundClip& clip : clips) {
        Node& node = nodes.Add(&container, NodeRelation::Child, L"Clip " + NumberText(clip.number),
                               std::wstring(L"Clip"));
        node.SetTag(
            MakeClipTag(clip.number, clip.formatCount, ThePlatform().clock.DateText(clip.changed), {}));
        // The program that wrote it may have ended before it was flushed.
        FlushLater(ClipFileOf(&node));
    }
}

void OfferFoundClips(CTreeViewEx& tree, Node& profile) {
    const std::wstring directory = GetProfileDirectory(&profile);
    const std::vector<FoundClip> all = FindClips(directory, &profile);
    std::vector<FoundClip> clips = all;
    LeaveOutRefused(clips, directory);
    if (clips.empty() || Offer(tree, profile, clips)) return;
    // Nobody has said No where the program came to its end.
    if (Profiles().ProfileOf(&profile) != nullptr) KeepRefusal(all, directory);
}

void SearchLostClips(CTreeViewEx& tree, Node& profile) {
    if (!ActionAllowed(TreeAction::NewFolder, &profile)) return;
    const std::wstring directory = GetProfileDirectory(&profile);
    const std::vector<FoundClip> clips = FindClips(directory, &profile);
    if (clips.empty())
        ThePlatform().user.Tell(L"Es wurden keine verlorenen Clips gefunden.", profile.Text());
    else
        Offer(tree, profile, clips);
}
