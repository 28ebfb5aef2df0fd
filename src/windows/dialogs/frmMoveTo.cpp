#include "windows/dialogs/frmMoveTo.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "engine/flows/DropRules.h"
#include "engine/profiles/NodePictures.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "resources/controls.h"
#include "windows/controls/Dpi.h"

frmMoveTo::frmMoveTo(const CTreeViewEx& tree, ChosenNodes sources, Node* start) : tree_(tree), start_(start) {
    for (Node* const source : sources)
        sources_.emplace_back(source);
}

void frmMoveTo::OnInit() {
    tvTargets_.Attach(Control(tvTargets));
    std::vector<Node*> sources;
    for (const NodeRef& source : sources_)
        if (source.Get() != nullptr) sources.push_back(source.Get());
    SetText(lbTitle, sources.size() == 1 ? L"\"" + sources.front()->Text() + L"\" nach:"
                                         : CountedText(sources) + L" nach:");
    Fill();
    EnableButtons();
}

// The level of each shown node decides below which one the next stands.
void frmMoveTo::Fill() {
    const BulkChangeScope bulk(shown_);
    std::vector<Node*> above{nullptr};
    Node* first = nullptr;
    TreeWalk walk(tree_.TreeView()->Root());
    while (walk.Current() != nullptr) {
        Node& node = *walk.Current();
        if (!IsNodeOfKind(&node, kProfileKind | kStructureKind)) {
            walk.StepOver();
            continue;
        }
        above.resize(static_cast<std::size_t>(LevelOf(&node)));
        Node* const parent = above.back();
        Node& shown = shown_.Add(parent, parent != nullptr ? NodeRelation::Child : NodeRelation::Last,
                                 node.Text(), KindImage(&node));
        shown.SetExpanded(node.Expanded());
        originals_.emplace_back(&node);
        above.push_back(&shown);
        if (&node == start_.Get()) first = &shown;
        walk.Step();
    }
    shown_.Select(first != nullptr ? first : shown_.Root());
    if (first != nullptr) tvTargets_.EnsureVisible(*first);
}

Node* frmMoveTo::OriginalOf(const Node* shown) const {
    return shown != nullptr ? originals_[static_cast<std::size_t>(shown->Index() - 1)].Get() : nullptr;
}

void frmMoveTo::OnResolution() {
    UniqueImageList pictures = LoadListPictures(SystemMetricForDpi(SM_CXSMICON, DpiOfWindow(Window())));
    TreeView_SetImageList(tvTargets_.Window(), pictures.Get(), TVSIL_NORMAL);
    pictures_ = std::move(pictures);
}

bool frmMoveTo::IsPermitted(bool move) const {
    const Node* const target = OriginalOf(shown_.Selected());
    return target != nullptr && !IsEditedByOther(target) &&
           std::all_of(sources_.begin(), sources_.end(), [&](const NodeRef& source) {
               return DropPermitted(tree_, source.Get(), target, true, move);
           });
}

void frmMoveTo::OnCommand(int control, int code) {
    if (control == cb_copy)
        Take(true);
    else
        Dialog::OnCommand(control, code);
}

LRESULT frmMoveTo::OnNotify(NMHDR& header) {
    if (header.idFrom != tvTargets) return 0;
    const LRESULT result = tvTargets_.OnNotify(header);
    if (header.code == TVN_SELCHANGEDW) EnableButtons();
    return result;
}

void frmMoveTo::EnableButtons() {
    Enable(cb_ok, IsPermitted(true));
    Enable(cb_copy, IsPermitted(false));
}

bool frmMoveTo::OnMessage(UINT message, WPARAM, LPARAM, LRESULT&) {
    // The control tells of the end of its items while the nodes still live.
    if (message == WM_DESTROY) {
        shown_.Clear();
        tvTargets_.Detach();
    }
    return false;
}

void frmMoveTo::OnOk() {
    Take(false);
}

void frmMoveTo::Take(bool copies) {
    if (!IsPermitted(!copies)) return;
    target_.Follow(OriginalOf(shown_.Selected()));
    copies_ = copies;
    Close(true);
}
