#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/tree/NodeCollection.h"
#include "engine/tree/modTreeEx.h"

// Trees as text: a node's text, then its children in brackets, blanks between siblings: "P(S(C1) C2) Q".

inline void AppendSiblings(std::wstring& outline, const Node* first) {
    for (const Node* node = first; node != nullptr; node = node->Next()) {
        if (node != first) outline += L' ';
        outline += node->Text();
        if (node->FirstChild() == nullptr) continue;
        outline += L'(';
        AppendSiblings(outline, node->FirstChild());
        outline += L')';
    }
}

inline std::wstring Outline(const NodeCollection& nodes) {
    std::wstring outline;
    AppendSiblings(outline, nodes.Root());
    return outline;
}

// Adds the outlined nodes at the end of the root level. Their tags are their texts, their image "I" and the
// text.
inline void Grow(NodeCollection& nodes, std::wstring_view outline) {
    Node* parent = nullptr;
    Node* last = nullptr;
    std::wstring text;
    const auto finishNode = [&] {
        if (text.empty()) return;
        last = &nodes.Add(parent, NodeRelation::Child, text, L"I" + text);
        last->SetTag(text);
        text.clear();
    };
    for (const wchar_t character : outline) {
        switch (character) {
            case L'(':
                finishNode();
                parent = last;
                break;
            case L')':
                finishNode();
                last = parent;
                parent = parent->Parent();
                break;
            case L' ':
                finishNode();
                break;
            default:
                text += character;
        }
    }
    finishNode();
}

// Adds a profile of `count` nodes: folders of 99 clips each, as a diligent user would have it. Returns it.
inline Node& GrowProfile(NodeCollection& nodes, int count) {
    Node& profile = nodes.Add(nullptr, NodeRelation::Last, L"Große Sammlung", L"Profile");
    profile.SetTag(MakeProfileTag(count, L"D:\\Clips", false, L""));
    Node* folder = nullptr;
    for (int i = 1; i < count; ++i) {
        const auto number = std::to_wstring(i);
        if (i % 100 == 1) {
            folder = &nodes.Add(&profile, NodeRelation::Child, L"Ordner " + number, L"Structure");
            folder->SetTag(MakeStructureTag(L""));
        } else {
            Node& clip = nodes.Add(folder, NodeRelation::Child, L"Ein Clip mit Namen " + number, L"Clip");
            clip.SetTag(MakeClipTag(i, 5, L"15.11.1999 13:10:00", L""));
        }
    }
    return profile;
}

// The first node with this text.
inline Node& Named(const NodeCollection& nodes, std::wstring_view text) {
    for (int i = 1; i <= nodes.Count(); ++i)
        if (nodes.Item(i)->Text() == text) return *nodes.Item(i);
    throw std::out_of_range("no such node");
}

// True when all links and indexes of the collection agree with each other.
inline bool IsConsistent(const NodeCollection& nodes) {
    for (int i = 1; i <= nodes.Count(); ++i) {
        const Node& node = *nodes.Item(i);
        if (node.Index() != i) return false;
        int children = 0;
        const Node* previous = nullptr;
        for (const Node* child = node.FirstChild(); child != nullptr; child = child->Next()) {
            if (child->Parent() != &node || child->Previous() != previous) return false;
            previous = child;
            ++children;
        }
        if (node.LastChild() != previous || node.Children() != children) return false;
    }
    const Node* previous = nullptr;
    for (const Node* root = nodes.Root(); root != nullptr; root = root->Next()) {
        if (root->Parent() != nullptr || root->Previous() != previous) return false;
        previous = root;
    }
    return nodes.LastRoot() == previous && nodes.Item(0) == nullptr &&
           nodes.Item(nodes.Count() + 1) == nullptr;
}

// A screen that writes down what it is told and shows what it is asked to.
class TestScreen : public NodeView {
 public:
    explicit TestScreen(NodeCollection& nodes) : nodes_(nodes) { nodes_.SetView(this); }
    ~TestScreen() override { nodes_.SetView(nullptr); }

    std::vector<std::wstring> told;
    Node* firstShown = nullptr;

    void NodeAdded(Node& node) override { Note(L"added", &node); }
    void NodeRemoving(Node& node) override { Note(L"removing", &node); }
    void NodeTextChanged(Node& node) override { Note(L"text", &node); }
    void NodeImageChanged(Node& node) override { Note(L"image", &node); }
    void NodeExpandedChanged(Node& node) override { Note(node.Expanded() ? L"open" : L"closed", &node); }
    void NodeMoved(Node& node) override { Note(L"moved", &node); }
    void ChildrenReordered(Node* parent) override { Note(L"reordered", parent); }
    void SelectionChanged(Node* node) override { Note(L"selected", node); }
    void AllRemoved() override { told.push_back(L"all removed, " + std::to_wstring(nodes_.Count())); }
    void BeginBulkChange() override { told.push_back(L"begin"); }
    void EndBulkChange() override { told.push_back(L"end"); }
    void EnsureVisible(Node& node) override { Note(L"ensure", &node); }
    Node* FirstVisible() override { return firstShown; }
    void ScrollDown() override { told.push_back(L"scroll down"); }

    std::vector<std::wstring> TakeTold() { return std::exchange(told, {}); }

 private:
    void Note(const std::wstring& what, const Node* node) {
        told.push_back(what + L" " + (node != nullptr ? node->Text() : L"-"));
    }

    NodeCollection& nodes_;
};
