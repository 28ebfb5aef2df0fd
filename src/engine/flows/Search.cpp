#include "engine/flows/Search.h"

#include "engine/profiles/modProfile.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr int kNames = 1;
constexpr int kInfoTexts = 2;
constexpr int kContents = 4;

// `name` is only memory to be used.
bool IsHit(const Node& node, const SearchCriteria& criteria, std::wstring& name) {
    if (!IsNodeOfKind(&node, criteria.kinds)) return false;
    node.TextAsKept().CopyTo(name);
    if ((criteria.fields & kNames) != 0 && MatchesSearchText(name, criteria)) return true;
    if ((criteria.fields & kInfoTexts) == 0) return false;
    ReadNodeAttributes(&node);
    return MatchesSearchText(ReadAttributes().info, criteria);
}

std::int16_t Mask(bool first, bool second, bool third) {
    return static_cast<std::int16_t>((first ? 1 : 0) | (second ? 2 : 0) | (third ? 4 : 0));
}

}  // namespace

bool MatchesSearchText(const std::wstring& value, const SearchCriteria& criteria) {
    if (value.empty()) return false;
    // The two modes differ in case: deliberate.
    return criteria.prefixMode ? BeginsWithNoCase(value, criteria.searchText)
                               : value.find(criteria.searchText) != std::wstring::npos;
}

Node* SearchForNode(CTreeViewEx& tree, const SearchCriteria& criteria, Node* start) {
    if (tree.TreeView() == nullptr) return nullptr;
    const auto step = [&](Node* node) {
        return criteria.downward ? tree.NextNode(node, false) : tree.PreviousNode(node, false);
    };
    Node* node = start != nullptr ? step(start) : tree.TreeView()->Root();
    std::wstring name;
    while (node != nullptr && !IsHit(*node, criteria, name))
        node = step(node);
    return node;
}

void SearchCommand(CTreeViewEx& tree, bool again, const std::function<bool()>& showDialog,
                   const std::function<void(Node&)>& show) {
    const SearchCriteria& criteria = TheSearchCriteria();
    const bool ask = !again || criteria.searchText.empty();
    if (ask && !showDialog()) return;
    if (criteria.searchText.empty()) return;
    Node* const hit = SearchForNode(tree, criteria, tree.TreeView()->Selected());
    if (hit != nullptr) {
        show(*hit);
    } else {
        ThePlatform().user.Inform(L"Suchtext nicht gefunden.");
    }
}

SearchControls ControlsFromCriteria(const SearchCriteria& criteria) {
    SearchControls controls;
    controls.tbSearch = criteria.searchText;
    controls.chkProfile = (criteria.kinds & kProfileKind) != 0;
    controls.chkStruct = (criteria.kinds & kStructureKind) != 0;
    controls.chkClip = (criteria.kinds & kClipKind) != 0;
    controls.chkName = (criteria.fields & kNames) != 0;
    controls.chkInfo = (criteria.fields & kInfoTexts) != 0;
    controls.chkValue = (criteria.fields & kContents) != 0;
    controls.optSearchPattern = {criteria.prefixMode, !criteria.prefixMode};
    controls.optUpDown = {!criteria.downward, criteria.downward};
    return controls;
}

SearchCriteria CriteriaFromControls(const SearchControls& controls) {
    SearchCriteria criteria;
    criteria.searchText = controls.tbSearch;
    criteria.kinds = Mask(controls.chkProfile, controls.chkStruct, controls.chkClip);
    criteria.fields = Mask(controls.chkName, controls.chkInfo, controls.chkValue);
    criteria.prefixMode = controls.optSearchPattern[0];
    criteria.downward = controls.optUpDown[1];
    return criteria;
}

bool SearchCanBeConfirmed(const SearchControls& controls) {
    const SearchCriteria criteria = CriteriaFromControls(controls);
    return !criteria.searchText.empty() && criteria.kinds != 0 && criteria.fields != 0;
}
