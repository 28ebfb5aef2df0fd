#include "engine/tree/modTreeEx.h"

#include <tuple>

#include "engine/tree/Tags.h"
#include "engine/tree/TreeWalk.h"
#include "platform/Paths.h"

namespace {

bool IsOfKind(const Node* node, char letter) {
    return node != nullptr && node->TagAsKept().BeginsWith(letter);
}

}  // namespace

bool IsClipNode(const Node* node) {
    return IsOfKind(node, 'C');
}

bool IsProfileNode(const Node* node) {
    return IsOfKind(node, 'P');
}

bool IsStructureNode(const Node* node) {
    return IsOfKind(node, 'S');
}

std::wstring MakeProfileTag(std::int32_t counter, const std::wstring& directory, bool globalFlag,
                            const std::wstring& info) {
    return ProfileTag{counter, directory, globalFlag, info}.Text();
}

void ParseProfileTag(const std::wstring& tag, std::int32_t& counter, std::wstring& directory,
                     bool& globalFlag, std::wstring& info) {
    ProfileTag read{counter, directory, globalFlag, info};
    read.Read(tag);
    std::tie(counter, directory, globalFlag, info) =
        std::tie(read.counter, read.directory, read.globalFlag, read.info);
}

std::wstring MakeClipTag(std::int32_t clipNumber, std::int16_t formatCount, const std::wstring& timeCaptured,
                         const std::wstring& info) {
    return ClipTag{clipNumber, formatCount, timeCaptured, info}.Text();
}

void ParseClipTag(const std::wstring& tag, std::int32_t& clipNumber, std::int16_t& formatCount,
                  std::wstring& timeCaptured, std::wstring& info) {
    ClipTag read{clipNumber, formatCount, timeCaptured, info};
    read.Read(tag);
    std::tie(clipNumber, formatCount, timeCaptured, info) =
        std::tie(read.number, read.formatCount, read.timeCaptured, read.info);
}

std::wstring MakeStructureTag(const std::wstring& info) {
    return StructureTag{info}.Text();
}

std::wstring ParseStructureTag(const std::wstring& tag) {
    return StructureTag::Of(tag).info;
}

std::wstring TreeDataFilePath(const std::wstring& directory) {
    return WithBackslash(directory) + L"nxclip.nxp";
}

std::int32_t DescendantCount(const Node* node) {
    std::int32_t count = 0;
    TreeWalk walk(node);
    for (walk.Step(); walk.InSubtree(); walk.Step())
        ++count;
    return count;
}

std::int32_t LevelOf(const Node* node) {
    std::int32_t level = 0;
    for (; node != nullptr; node = node->Parent())
        ++level;
    return level;
}
