#include "engine/flows/Search.h"

#include "engine/profiles/modProfile.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr int kNames = 1;
constexpr int kInfoTexts = 2;
constexpr int kContents = 4;

// Compares values with the search text, which is made ready once for the whole walk.
class TextMatcher {
 public:
    explicit TextMatcher(const SearchCriteria& criteria)
        : prefixMode_(criteria.prefixMode),
          text_(criteria.prefixMode ? UpperCase(criteria.searchText) : criteria.searchText) {}

    bool Matches(const std::wstring& value) const {
        if (value.empty()) return false;
        // The two modes differ in case: deliberate.
        if (!prefixMode_) return value.find(text_) != std::wstring::npos;
        return value.size() >= text_.size() && UpperCase(value.substr(0, text_.size())) == text_;
    }

 private:
    bool prefixMode_;
    std::wstring text_;
};

bool IsHit(const Node& node, const SearchCriteria& criteria, const TextMatcher& matcher) {
    if (!IsNodeOfKind(&node, criteria.kinds)) return false;
    if ((criteria.fields & kNames) != 0 && matcher.Matches(node.Text())) return true;
    if ((criteria.fields & kInfoTexts) == 0) return false;
    ReadNodeAttributes(&node);
    return matcher.Matches(ReadAttributes().info);
}

std::int16_t Mask(bool first, bool second, bool third) {
    return static_cast<std::int16_t>((first ? 1 : 0) | (second ? 2 : 0) | (third ? 4 : 0));
}

}  // namespace

bool MatchesSearchText(const std::wstring& value, const SearchCriteria& criteria) {
    return TextMatcher(criteria).Matches(value);
}

Node* SearchForNode(CTreeViewEx& tree, const SearchCriteria& criteria, Node* start) {
    if (tree.TreeView() == nullptr) return nullptr;
    const auto step = [&](Node* node) {
        return criteria.downward ? tree.NextNode(node, false) : tree.PreviousNode(node, false);
    };
    const TextMatcher matcher(criteria);
    Node* node = start != nullptr ? step(start) : tree.TreeView()->Root();
    while (node != nullptr && !IsHit(*node, criteria, matcher))
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
        ThePlatform().user.Tell(L"Suchtext nicht gefunden.");
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
