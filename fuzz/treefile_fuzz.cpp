// The reader of the tree data file and the building of nodes, on any bytes: the tree must stay sound, and
// what was built must come back the same when it is saved and loaded.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/TestTree.h"
#include "fake/FakePlatform.h"

namespace {

const std::wstring kGiven = L"C:\\given.nxp";
const std::wstring kSaved = L"C:\\saved.nxp";

void Expect(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FakePlatform fake;
    fake.files.SetBytes(kGiven, std::string_view(reinterpret_cast<const char*>(bytes), size));
    NodeCollection nodes;
    Grow(nodes, L"P(S)");
    CTreeViewEx tree;
    tree.Bind(&nodes);

    if (!tree.LoadDataFromFile(kGiven)) {
        Expect(fake.user.messages.size() == 1 && tree.Data().Count == 0 && nodes.Count() == 2);
        return 0;
    }
    const int stored = tree.Data().Count;
    Expect(static_cast<std::size_t>(stored) <= size / 18);
    Node* const built = tree.BuildSubTreeFromData(nodes.Root()->FirstChild());
    Expect(IsConsistent(nodes) && nodes.Count() <= stored + 2);
    Expect((nodes.Count() == stored + 2) == fake.user.messages.empty());
    Expect(Named(nodes, L"S").Next() == nullptr && nodes.Root()->Next() == nullptr);
    if (built == nullptr) return 0;

    Expect(tree.BuildTreeData(built));
    const TreeData saved = tree.Data();
    Expect(tree.SaveDataToFile(kSaved) && tree.LoadDataFromFile(kSaved) && tree.Data() == saved);
    Node* const again = tree.BuildSubTreeFromData(nullptr);
    Expect(again != nullptr && tree.BuildTreeData(again) && tree.Data() == saved);
    Expect(tree.CopyNode(nullptr, built, false, false, false) != nullptr && IsConsistent(nodes));
    return 0;
}
