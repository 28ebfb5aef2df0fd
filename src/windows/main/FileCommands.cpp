#include "windows/main/FileCommands.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "engine/flows/Export.h"
#include "engine/flows/Import.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/tree/NodeRef.h"
#include "platform/Platform.h"
#include "resources/controls.h"
#include "windows/dialogs/frmDirSelect.h"
#include "windows/dialogs/frmProgress.h"

namespace {

// A box with more lines would not fit on the screen.
constexpr std::size_t kMostTold = 10;

constexpr const wchar_t* kExport = L"Exportieren";
constexpr const wchar_t* kImport = L"Aufnehmen";

// Does it, tells what failed, and says in the end what was done.
std::wstring ResultOf(HWND owner, const std::wstring& title, LongWork& work) {
    const bool whole = DoLongWork(owner, title, work);
    const std::vector<std::wstring>& failures = work.Failures();
    std::wstring text = L"Nicht alles ist gelungen:";
    for (std::size_t i = 0; i < std::min(kMostTold, failures.size()); ++i)
        text += L"\r\n" + failures[i];
    if (failures.size() > kMostTold) text += L"\r\n...";
    if (!failures.empty()) ThePlatform().user.Tell(text, title, MessageIcon::Error);
    return (whole ? L"" : L"Abgebrochen. ") + work.Summary();
}

// The nodes that are still there after a dialog.
std::vector<const Node*> Living(const std::vector<std::unique_ptr<NodeRef>>& references) {
    std::vector<const Node*> nodes;
    for (const auto& reference : references)
        if (reference->Get() != nullptr) nodes.push_back(reference->Get());
    return nodes;
}

}  // namespace

std::wstring ExportByDialog(HWND owner, std::span<Node* const> nodes) {
    std::vector<std::unique_ptr<NodeRef>> wanted;
    for (Node* node : nodes)
        wanted.push_back(std::make_unique<NodeRef>(node));
    frmDirSelect where(L"Exportieren nach", L"");
    if (!where.ShowModal(owner, IDD_frmDirSelect)) return {};
    const std::vector<const Node*> living = Living(wanted);
    if (living.empty()) return {};
    Export files(living, where.Directory());
    return ResultOf(owner, kExport, files);
}

std::wstring ImportWithProgress(HWND owner, CTreeViewEx& tree, Node& container,
                                std::vector<std::wstring> paths) {
    Import files(*tree.TreeView(), container, std::move(paths));
    const std::wstring result = ResultOf(owner, kImport, files);
    SaveAllProfiles(tree);
    return result;
}
