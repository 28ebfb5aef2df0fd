// A template file that nobody vouches for: it is looked at and installed. There is a whole profile
// afterwards, the same in memory and on the disk, or none at all.

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

#include "Require.h"
#include "engine/flows/Templates.h"
#include "engine/profiles/DirectoryCheck.h"
#include "engine/profiles/ProfileWorld.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ProfileWorld world;
    const std::wstring file = TemplateDirectory() + kFirstStartTemplates[0].file;
    world.fake.files.SetBytes(file, {reinterpret_cast<const char*>(data), size});

    NodeCollection previewNodes;
    CTreeViewEx preview;
    preview.Bind(&previewNodes);
    LoadTemplatePreview(preview, file);
    Require(IsConsistent(previewNodes));

    const std::wstring apart = L"C:\\Vorlage";
    world.fake.files.AddDirectory(apart);
    world.fake.files.SetBytes(TreeDataFilePath(apart), {reinterpret_cast<const char*>(data), size});
    std::set<Damage> carried;
    for (const Finding& finding : CheckDirectory(apart).findings)
        carried.insert(finding.damage);

    const auto before = world.Files();
    Node* const profile =
        InstallFirstStartTemplates(world.tree, world.container, {false, {true, false, false, false}, true});
    Require(IsConsistent(world.nodes) && world.container.Get() == profile);
    Require(Profiles().Count() == (profile != nullptr ? 1 : 0));
    if (profile == nullptr) {
        Require(world.nodes.Count() == 0 && world.Files() == before);
        return 0;
    }
    Require(profile->Text() == kFirstStartTemplates[0].name && profile->Next() == nullptr);
    // What the template holds comes with it; nothing may be added to that.
    const std::wstring installed = GetProfileDirectory(profile);
    Require(world.Damage().size() == LossesIn(installed).size());
    for (const Finding& finding : CheckDirectory(installed).findings)
        Require(carried.contains(finding.damage));
    Require(world.MemoryOutline() == world.DiskOutline());
    return 0;
}
