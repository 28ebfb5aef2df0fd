#include "engine/profiles/modProfile.h"

#include <limits>

#include "engine/profiles/CProfiles.h"
#include "engine/tree/Tags.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

NodeAttributes sharedAttributes;

// The memory that a tag is read into, so that the next of many nodes can use it again.
struct TagMemory {
    std::wstring text;
    ClipTag clip;
    ProfileTag profile;
};

// Reads until the damage: a search must not stop there.
template <typename Tag>
void ReadWhatIsSound(Tag& tag, const std::wstring& text) {
    try {
        tag.Read(text);
    } catch (const RuntimeError&) {
    }
}

void Empty(NodeAttributes& attributes) {
    attributes.clipNumber = attributes.counter = 0;
    attributes.formatCount = 0;
    attributes.globalFlag = false;
    for (std::wstring* const text : {&attributes.timeCaptured, &attributes.directory, &attributes.info})
        text->clear();
}

void ReadClip(NodeAttributes& attributes, TagMemory& memory) {
    ClipTag& tag = memory.clip;
    tag.number = 0;
    tag.formatCount = 0;
    tag.timeCaptured.clear();
    tag.info.clear();
    ReadWhatIsSound(tag, memory.text);
    attributes.clipNumber = tag.number;
    attributes.formatCount = tag.formatCount;
    attributes.timeCaptured.swap(tag.timeCaptured);
    attributes.info.swap(tag.info);
}

void ReadProfile(NodeAttributes& attributes, TagMemory& memory) {
    memory.profile = {};
    ReadWhatIsSound(memory.profile, memory.text);
    attributes.counter = memory.profile.counter;
    attributes.directory = memory.profile.directory;
    attributes.globalFlag = memory.profile.globalFlag;
    attributes.info = memory.profile.info;
}

void ReadInto(NodeAttributes& attributes, const Node* node, TagMemory& memory) {
    Empty(attributes);
    if (node == nullptr) return;
    node->TagAsKept().CopyTo(memory.text);
    if (IsClipNode(node)) ReadClip(attributes, memory);
    if (IsStructureNode(node)) attributes.info = StructureTag::Of(memory.text).info;
    if (IsProfileNode(node)) ReadProfile(attributes, memory);
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
        return ProfileTag::Of(node->Tag()).directory;
    } catch (const RuntimeError&) {
        return {};
    }
}

void SetProfileDirectory(Node* node, const std::wstring& directory) {
    if (!IsProfileNode(node)) return;
    ProfileTag tag = ProfileTag::Of(node->Tag());
    tag.directory = directory;
    node->SetTag(tag.Text());
}

std::wstring NewClipFileName(Node* node, bool commit, std::int32_t& clipNumber) {
    if (node == nullptr) return {};
    Node* const profile = GetProfileNode(node, true);
    if (profile == nullptr) return {};
    ProfileTag tag = ProfileTag::Of(profile->Tag());
    if (tag.counter == std::numeric_limits<std::int32_t>::max()) throw RuntimeError(ErrorNumber::Overflow);
    clipNumber = ++tag.counter;
    if (commit) {
        profile->SetTag(tag.Text());
        SetDirtyProfile(tag.directory);
    }
    return ClipFilePath(tag.directory, clipNumber);
}

bool IsTrustedClipNumber(std::int32_t number) {
    return number >= 0 && number <= 2'000'000'000;
}

void RaiseClipCounter(Node& profile, std::int32_t number) {
    ProfileTag tag = ProfileTag::Of(profile.Tag());
    if (tag.counter >= number) return;
    tag.counter = number;
    profile.SetTag(tag.Text());
}

std::wstring ClipFilePath(const std::wstring& directory, std::int32_t clipNumber) {
    return WithBackslash(directory) + L"C" + NumberText(clipNumber) + L".nxc";
}

std::int32_t ClipNumberOf(const Node* clip) {
    return IsClipNode(clip) ? ClipTag::NumberOf(clip->TagAsKept()) : 0;
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
    return profile != nullptr && profile->File.HeldByOther();
}

NodeAttributes AttributesOf(const Node* node) {
    NodeAttributes attributes;
    TagMemory memory;
    ReadInto(attributes, node, memory);
    return attributes;
}

void ReadNodeAttributes(const Node* node) {
    static TagMemory memory;
    ReadInto(sharedAttributes, node, memory);
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
