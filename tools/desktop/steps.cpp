// Counts what the rows of a large tree cost a tree control that knows of each item only the next one, as the
// system's own may: to put an item last among its siblings, to take one out, and to be asked for the one in
// front, it walks along them. Wine's control does not, so no time shows it; a count does. A walk counts up to
// a hundred steps: with more than a few for each row a work is far too costly anyhow.
//
// Usage: steps [CLIPS]     a line for each work: name, tab, steps, tab, unit

#include <windows.h>
// The tree control needs <windows.h> in front of it.
#include <commctrl.h>

#include <cstdio>
#include <string>
#include <vector>

#include "engine/tree/NodeCollection.h"
#include "windows/controls/TreePane.h"

namespace {

constexpr wchar_t kParentClass[] = L"NXClipSteps";
constexpr long long kLongestWalk = 100;

// What the control would have walked so far.
class Steps {
 public:
    explicit Steps(HWND control) : control_(control) {
        SetWindowSubclass(control, &Steps::Procedure, 0, reinterpret_cast<DWORD_PTR>(this));
    }
    long long Taken() const { return taken_; }

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR self) {
        auto& steps = *reinterpret_cast<Steps*>(self);
        if (!steps.looking_) steps.Count(message, wParam, lParam);
        return DefSubclassProc(window, message, wParam, lParam);
    }
    void Count(UINT message, WPARAM wParam, LPARAM lParam) {
        looking_ = true;
        const auto* const insert = reinterpret_cast<const TVINSERTSTRUCTW*>(lParam);
        if (message == TVM_INSERTITEMW) {
            ++taken_;
            if (insert->hInsertAfter == TVI_LAST) taken_ += Siblings(FirstBelow(insert->hParent), nullptr);
        } else if (message == TVM_DELETEITEM || (message == TVM_GETNEXTITEM && wParam == TVGN_PREVIOUS)) {
            taken_ += 1 + InFrontOf(reinterpret_cast<HTREEITEM>(lParam));
        } else if (message == TVM_GETNEXTITEM) {
            ++taken_;
        }
        looking_ = false;
    }
    HTREEITEM FirstBelow(HTREEITEM parent) const {
        const bool root = parent == nullptr || parent == TVI_ROOT;
        return root ? TreeView_GetRoot(control_) : TreeView_GetChild(control_, parent);
    }
    long long InFrontOf(HTREEITEM item) const {
        if (item == nullptr || item == TVI_ROOT) return 0;
        return Siblings(FirstBelow(TreeView_GetParent(control_, item)), item);
    }
    long long Siblings(HTREEITEM from, HTREEITEM until) const {
        long long count = 0;
        for (HTREEITEM item = from; item != nullptr && item != until && count < kLongestWalk; ++count)
            item = TreeView_GetNextSibling(control_, item);
        return count;
    }

    HWND control_;
    long long taken_ = 0;
    bool looking_ = false;
};

// The program's tree, without a window to be seen in.
class Tree {
 public:
    Tree() {
        WNDCLASSW shape{};
        shape.lpfnWndProc = &Tree::Procedure;
        shape.hInstance = GetModuleHandleW(nullptr);
        shape.lpszClassName = kParentClass;
        RegisterClassW(&shape);
        const HWND parent = CreateWindowW(kParentClass, L"", WS_POPUP, 0, 0, 300, 300, nullptr, nullptr,
                                          shape.hInstance, nullptr);
        SetWindowLongPtrW(parent, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&pane_));
        pane_.Create(parent, 1);
    }
    NodeCollection& Nodes() { return nodes_; }
    HWND Control() const { return pane_.Window(); }

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* const pane = reinterpret_cast<TreePane*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == WM_NOTIFY && pane != nullptr) return pane->OnNotify(*reinterpret_cast<NMHDR*>(lParam));
        return DefWindowProcW(window, message, wParam, lParam);
    }

    NodeCollection nodes_;
    TreePane pane_{nodes_};
};

std::vector<Node*> ClipsOf(Node& folder) {
    std::vector<Node*> clips;
    for (Node* clip = folder.FirstChild(); clip != nullptr; clip = clip->Next())
        clips.push_back(clip);
    return clips;
}

void Measure(int clips) {
    Tree tree;
    const Steps steps(tree.Control());
    NodeCollection& nodes = tree.Nodes();
    auto print = [&, before = 0LL](const char* work) mutable {
        std::printf("steps, %s, %d clips\t%lld\tsteps\n", work, clips, steps.Taken() - before);
        before = steps.Taken();
    };
    const auto add = [&](Node* folder, int number) -> Node& {
        return nodes.Add(folder, NodeRelation::Child, L"Clip " + std::to_wstring(number * 7919 % clips), {});
    };
    Node& folder = nodes.Add(nullptr, NodeRelation::Last, L"Ordner", {});
    {
        const BulkChangeScope load(nodes);
        for (int number = 0; number < clips; ++number)
            add(&folder, number);
    }
    print("a closed folder");
    folder.SetExpanded(true);
    print("its rows made");
    Node& newest = add(&folder, clips);
    nodes.Select(&newest);
    print("a capture");
    folder.SetSorted(true);
    print("sorted");
    {
        const BulkChangeScope bulk(nodes);
        nodes.RemoveAll(ClipsOf(folder));
    }
    print("all clips deleted");
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_TREEVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    Measure(count > 1 ? _wtoi(arguments[1]) : 100'000);
    return 0;
}
