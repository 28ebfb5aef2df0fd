#include "engine/profiles/modProfile.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

#include "engine/profiles/CProfiles.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

// A profile's tag taken apart.
struct ProfileFields {
    std::int32_t counter = 0;
    std::wstring directory;
    bool globalFlag = false;
    std::wstring info;

    explicit ProfileFields(const Node& profile) {
        ParseProfileTag(profile.Tag(), counter, directory, globalFlag, info);
    }
    std::wstring Tag() const { return MakeProfileTag(counter, directory, globalFlag, info); }
};

NodeAttributes sharedAttributes;

// Of a clip's tag as the program writes it, "C&12,5&...": it is asked for of all nodes of a profile at once.
// None for any other tag, right or wrong.
std::optional<std::int32_t> NumberInUsualTag(const KeptText& tag) {
    constexpr std::size_t kMostDigits = 4;  // of the count
    if (!tag.IsAnsi() || !tag.Bytes().starts_with("C&")) return std::nullopt;
    const char* next = tag.Bytes().data() + 2;
    const char* const end = tag.Bytes().data() + tag.Bytes().size();
    std::int32_t number = 0;
    std::uint16_t count = 0;
    auto read = std::from_chars(next, end, number);
    if (read.ec != std::errc() || number < 0 || read.ptr == end || *read.ptr != ',') return std::nullopt;
    next = read.ptr + 1;
    read = std::from_chars(next, end, count);
    if (read.ec != std::errc() || read.ptr == end || *read.ptr != '&') return std::nullopt;
    if (read.ptr > next + kMostDigits) return std::nullopt;
    return number;
}

// `attributes` has nothing in it yet; `tag` is only memory to be used.
void ReadInto(NodeAttributes& attributes, const Node* node, std::wstring& tag) {
    if (node == nullptr) return;
    node->TagAsKept().CopyTo(tag);
    try {
        if (IsClipNode(node)) {
            ParseClipTag(tag, attributes.clipNumber, attributes.formatCount, attributes.timeCaptured,
                         attributes.info);
        } else if (IsStructureNode(node)) {
            attributes.info = ParseStructureTag(tag);
        } else if (IsProfileNode(node)) {
            ParseProfileTag(tag, attributes.counter, attributes.directory, attributes.globalFlag,
                            attributes.info);
        }
    } catch (const RuntimeError&) {
        // What stands in front of the damage has been read; a search must not stop here.
    }
}

}  // namespace

bool IsNodeOfKind(const Node* node, int mask) {
    return ((mask & kProfileKind) != 0 && IsProfileNode(node)) ||
           ((mask & kStructureKind) != 0 && IsStructureNode(node)) ||
           ((mask & kClipKind) != 0 && IsClipNode(node));
}

const Node* GetTopNode(const Node* node) {
    while (node != nullptr && node->Parent() != nullptr)
        node = node->Parent();
    return node;
}

Node* GetTopNode(Node* node) {
    return const_cast<Node*>(GetTopNode(static_cast<const Node*>(node)));
}

Node* GetProfileNode(Node* node, bool showError) {
    if (node == nullptr) return nullptr;
    Node* const top = GetTopNode(node);
    if (IsProfileNode(top)) return top;
    if (showError) ThePlatform().user.Tell(L"GetProfileNode: Fataler Fehler. Kein Profilknoten ermittelt");
    return nullptr;
}

std::wstring GetProfileDirectory(const Node* node) {
    if (!IsProfileNode(node)) return {};
    try {
        return ProfileFields(*node).directory;
    } catch (const RuntimeError&) {
        return {};
    }
}

void SetProfileDirectory(Node* node, const std::wstring& directory) {
    if (!IsProfileNode(node)) return;
    ProfileFields fields(*node);
    fields.directory = directory;
    node->SetTag(fields.Tag());
}

std::wstring NewClipFileName(Node* node, bool commit, std::int32_t& clipNumber) {
    if (node == nullptr) return {};
    Node* const profile = GetProfileNode(node, true);
    if (profile == nullptr) return {};
    ProfileFields fields(*profile);
    if (fields.counter == std::numeric_limits<std::int32_t>::max()) throw RuntimeError(ErrorNumber::Overflow);
    clipNumber = ++fields.counter;
    if (commit) {
        profile->SetTag(fields.Tag());
        SetDirtyProfile(fields.directory);
    }
    return ClipFilePath(fields.directory, clipNumber);
}

bool IsTrustedClipNumber(std::int32_t number) {
    return number >= 0 && number <= 2'000'000'000;
}

void RaiseClipCounter(Node& profile, std::int32_t number) {
    ProfileFields fields(profile);
    if (fields.counter >= number) return;
    fields.counter = number;
    profile.SetTag(fields.Tag());
}

std::wstring ClipFilePath(const std::wstring& directory, std::int32_t clipNumber) {
    return WithBackslash(directory) + L"C" + NumberText(clipNumber) + L".nxc";
}

std::int32_t ClipNumberOf(const Node* clip) {
    if (!IsClipNode(clip)) return 0;
    if (const auto number = NumberInUsualTag(clip->TagAsKept())) return *number;
    std::int32_t number = 0;
    std::int16_t formatCount = 0;
    std::wstring timeCaptured;
    std::wstring info;
    try {
        ParseClipTag(clip->Tag(), number, formatCount, timeCaptured, info);
    } catch (const RuntimeError&) {
        return 0;
    }
    return std::max(number, 0);
}

std::wstring ClipFileOf(const Node* clip) {
    const std::int32_t number = ClipNumberOf(clip);
    const std::wstring directory = GetProfileDirectory(GetTopNode(clip));
    if (number == 0 || directory.empty()) return {};
    return ClipFilePath(directory, number);
}

void SetDirtyProfile(const std::wstring& directory) {
    CProfile* const profile = Profiles().GetProfile(directory);
    if (profile != nullptr) {
        profile->Dirty = true;
    } else {
        ThePlatform().user.Tell(L"Fataler Fehler (SetDirtyProfile)\r\n" + directory +
                                L" nicht in der Profilliste gefunden !!!");
    }
}

bool IsEditedByOther(const Node* node) {
    const CProfile* const profile = Profiles().ProfileOf(GetTopNode(node));
    return profile != nullptr && profile->Lock.HeldByOther();
}

NodeAttributes AttributesOf(const Node* node) {
    NodeAttributes attributes;
    std::wstring tag;
    ReadInto(attributes, node, tag);
    return attributes;
}

void ReadNodeAttributes(const Node* node) {
    static std::wstring tag;
    sharedAttributes.clipNumber = sharedAttributes.counter = 0;
    sharedAttributes.formatCount = 0;
    sharedAttributes.globalFlag = false;
    // Emptied, they keep their memory for the next of many nodes.
    for (std::wstring* const text :
         {&sharedAttributes.timeCaptured, &sharedAttributes.directory, &sharedAttributes.info})
        text->clear();
    ReadInto(sharedAttributes, node, tag);
}

const NodeAttributes& ReadAttributes() {
    return sharedAttributes;
}

NodeCounts CountBelow(const Node& node) {
    NodeCounts counts;
    TreeWalk walk(&node);
    for (walk.Step(); walk.InSubtree(); walk.Step()) {
        if (IsStructureNode(walk.Current())) ++counts.folders;
        if (IsClipNode(walk.Current())) ++counts.clips;
    }
    return counts;
}
