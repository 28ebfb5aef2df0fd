// A profile's file that nobody vouches for is loaded, walked, and worked on with copies, moves and deletions:
// the tree stays sound, nothing of a clip that still stands in it is lost, and the disk holds what memory
// holds. Input: the number of commands, four bytes for each (what, node, target, how), then the file.

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "Require.h"
#include "engine/profiles/ProfileWorld.h"

namespace {

constexpr int kMostCommands = 8;
constexpr int kMostClipFiles = 64;

Node* Pick(const NodeCollection& nodes, std::uint8_t number) {
    return nodes.Item(1 + number % std::max(nodes.Count(), 1));
}

void WalkBothWays(CTreeViewEx& tree) {
    const NodeCollection& nodes = *tree.TreeView();
    int met = 0;
    Node* last = nullptr;
    for (Node* node = nodes.Root(); node != nullptr; node = tree.NextNode(node, false)) {
        Require(tree.PreviousNode(node, false) == last);
        last = node;
        ++met;
    }
    Require(met == nodes.Count());
}

using Contents = std::map<std::wstring, std::string>;

Contents AllContents(const ProfileWorld& world) {
    Contents contents;
    for (const std::wstring& file : world.Files())
        contents[file] = *world.fake.files.Bytes(file);
    return contents;
}

// A clip that stands in the tree still has the data that lay in its file before.
void RequireNothingLost(const ProfileWorld& world, const Contents& before) {
    for (int i = 1; i <= world.nodes.Count(); ++i) {
        const std::wstring file = ClipFileOf(world.nodes.Item(i));
        const auto lay = before.find(UpperCase(file));
        if (lay != before.end()) Require(world.fake.files.Bytes(file) == lay->second);
    }
}

void MakeClipFiles(ProfileWorld& world) {
    for (int i = 1; i <= std::min(world.nodes.Count(), kMostClipFiles); ++i) {
        const std::wstring file = ClipFileOf(world.nodes.Item(i));
        if (!file.empty()) world.fake.files.SetBytes(file, "data of " + std::to_string(i));
    }
}

void Do(ProfileWorld& world, std::span<const std::uint8_t, 4> command) {
    Node* const node = Pick(world.nodes, command[1]);
    Node* const target = command[2] == 0 ? nullptr : Pick(world.nodes, command[2]);
    switch (command[0] % 3) {
        case 0:
            world.operations.Drop(target, node, (command[3] & 1) != 0, (command[3] & 2) != 0);
            break;
        case 1:
            world.fake.user.answers = {true};
            world.operations.Delete(node);
            break;
        default:
            node->SetSorted(true);
            SetProfileChanged(node);
            SaveAllProfiles(world.tree);
    }
    world.fake.user.answers.clear();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    const std::size_t commands = data[0] % (kMostCommands + 1);
    if (size < 1 + commands * 4) return 0;
    const std::string_view file(reinterpret_cast<const char*>(data) + 1 + commands * 4,
                                size - 1 - commands * 4);

    ProfileWorld world;
    world.AddProfile(L"Q");
    world.fake.files.SetBytes(L"C:\\P\\nxclip.nxp", file);
    if (world.actions.ImportProfileDirect(L"C:\\P") == nullptr) return 0;
    MakeClipFiles(world);
    for (std::size_t i = 0; i < commands && world.nodes.Count() > 0; ++i) {
        const Contents before = AllContents(world);
        Do(world, std::span<const std::uint8_t, 4>(data + 1 + i * 4, 4));
        Require(IsConsistent(world.nodes));
        WalkBothWays(world.tree);
        RequireNothingLost(world, before);
    }
    SetProfileChanged(world.nodes.Root());
    Require(SaveAllProfiles(world.tree));
    Require(world.MemoryOutline() == world.DiskOutline());
    return 0;
}
