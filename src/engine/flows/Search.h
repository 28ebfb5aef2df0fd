#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "engine/process/SearchCriteria.h"
#include "engine/tree/CTreeViewEx.h"

// The search through the tree.

// The first node that meets the criteria, one step behind `start` or, when that is null, from the first node
// on; null at the end of the tree. The contents of clips are never looked at: deliberate, although the dialog
// lets the user choose them.
Node* SearchForNode(CTreeViewEx& tree, const SearchCriteria& criteria, Node* start);
// A field's value against the search text; an empty one never matches.
bool MatchesSearchText(const std::wstring& value, const SearchCriteria& criteria);

// The search commands: `again` repeats the last search without the dialog if there was one. `showDialog`
// lets the user edit the criteria and returns true when they were confirmed; `show` selects a hit.
void SearchCommand(CTreeViewEx& tree, bool again, const std::function<bool()>& showDialog,
                   const std::function<void(Node&)>& show);

// The dialog's controls, under their names.
struct SearchControls {
    std::wstring tbSearch;
    bool chkProfile = false, chkStruct = false, chkClip = false;
    bool chkName = false, chkInfo = false, chkValue = false;
    std::array<bool, 2> optSearchPattern{};  // 0 begins with, 1 contains
    std::array<bool, 2> optUpDown{};         // 0 upward, 1 downward
};
SearchControls ControlsFromCriteria(const SearchCriteria& criteria);
SearchCriteria CriteriaFromControls(const SearchControls& controls);
// OK is enabled: there is a text, a kind and a field to search.
bool SearchCanBeConfirmed(const SearchControls& controls);
