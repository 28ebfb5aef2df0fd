// The reader of the tree data file and the building of nodes, on any bytes: the tree must stay sound, and
// what was built must come back the same when it is saved and loaded.

#include <cstddef>
#include <cstdint>
#include <string>

#include "Require.h"
#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/TestTree.h"
#include "fake/FakePlatform.h"

namespace {

const std::wstring kGiven = L"C:\\given.nxp";
const std::wstring kSaved = L"C:\\saved.nxp";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FakePlatform fake;
    fake.files.SetBytes(kGiven, std::string_view(reinterpret_cast<const char*>(bytes), size));
    NodeCollection nodes;
    Grow(nodes, L"P(S)");
    CTreeViewEx tree;
    tree.Bind(&nodes);

    if (!tree.LoadDataFromFile(kGiven)) {
        Require(fake.user.messages.size() == 1 && tree.Data().Count == 0 && nodes.Count() == 2);
        return 0;
    }
    const int stored = tree.Data().Count;
    Require(static_cast<std::size_t>(stored) <= size / 18);
    Node* const built = tree.BuildSubTreeFromData(nodes.Root()->FirstChild());
    Require(IsConsistent(nodes) && nodes.Count() <= stored + 2);
    Require((nodes.Count() == stored + 2) == fake.user.messages.empty());
    Require(Named(nodes, L"S").Next() == nullptr && nodes.Root()->Next() == nullptr);
    if (built == nullptr) return 0;

    Require(tree.BuildTreeData(built));
    const TreeData saved = tree.Data();
    Require(tree.SaveDataToFile(kSaved) && tree.LoadDataFromFile(kSaved) && tree.Data() == saved);
    Node* const again = tree.BuildSubTreeFromData(nullptr);
    Require(again != nullptr && tree.BuildTreeData(again) && tree.Data() == saved);
    Require(tree.CopyNode(nullptr, built, false, false, false) != nullptr && IsConsistent(nodes));
    return 0;
}
