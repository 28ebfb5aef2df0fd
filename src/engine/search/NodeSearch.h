#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "engine/search/ContentSearch.h"
#include "engine/search/WordSearch.h"
#include "engine/tree/Node.h"

class NodeCollection;

// Looks at the names and the info texts of nodes, and says which clips' files are to be looked into.

// Where a node itself shows what was asked for.
struct NodeHit {
    bool inInfo = false;
    HitLine line;
};

class NodeSearch {
 public:
    NodeSearch(const SearchQuery& query, Likeness likeness, FileTime now);

    // What there is to do about a node.
    enum class Outcome {
        Fits,    // its name and info say so
        MayFit,  // its file decides: Target() is to be looked into
        FitsNot,
    };
    Outcome LookAt(const Node& node);
    // The clip that was looked at last; its number is 0 for a node without a file.
    const ClipTarget& Target() const { return target_; }
    // Where the node that was looked at last shows its hit.
    NodeHit Hit();

    // Without clips; the directories come as nodes are looked at.
    SearchPlan& Plan() { return plan_; }
    // True when the words might stand in texts that are written without marks, or with others.
    static bool MayBeTriedByLetters(const SearchQuery& query);

 private:
    // The attributes that were read last are the clip's.
    bool ReadTarget(const Node& clip);
    std::uint32_t DirectoryOf(const Node& clip);

    WordSearch words_;
    SearchPlan plan_;
    bool needsFile_;
    ClipTarget target_;
    std::u16string name_;
    std::u16string info_;
    std::map<const Node*, std::uint32_t> directories_;
};

// Everything below a node (null: the whole tree of `nodes`), names and clips to be looked into, for those who
// want it all at once.
struct FoundByName {
    Node* node;
    NodeHit hit;
    ClipTarget clip;  // its number is 0 for a node without a file
};
struct SearchedTree {
    std::vector<FoundByName> found;
    SearchPlan plan;
    // The nodes of the plan's clips, at the same places.
    std::vector<Node*> clips;
};
SearchedTree SearchTree(Node* below, const NodeCollection& nodes, const SearchQuery& query, Likeness likeness,
                        FileTime now);
