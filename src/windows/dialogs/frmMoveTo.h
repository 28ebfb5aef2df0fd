#pragma once

#include <deque>
#include <string>

#include "engine/flows/ChosenNodes.h"
#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/NodeRef.h"
#include "windows/controls/Dialog.h"
#include "windows/controls/Pictures.h"
#include "windows/controls/TreePane.h"

// Lets the user choose the profile or folder into which clips and folders go, from a tree of these alone.
class frmMoveTo : public Dialog {
 public:
    // `start` is chosen at first, if it can take them: a profile, a folder or null. `tree` must outlive the
    // dialog.
    frmMoveTo(const CTreeViewEx& tree, ChosenNodes sources, Node* start);

    // The chosen folder; null when it is gone.
    Node* Target() const { return target_.Get(); }
    // True when the sources are to be copied, not moved.
    bool Copies() const { return copies_; }

 private:
    void OnInit() override;
    void OnResolution() override;
    void OnCommand(int control, int code) override;
    LRESULT OnNotify(NMHDR& header) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::DragAndDrop; }

    void Fill();
    void EnableButtons();
    // The node that a node of the dialog's own tree stands for; null when it is gone.
    Node* OriginalOf(const Node* shown) const;
    bool IsPermitted(bool move) const;
    void Take(bool copies);

    const CTreeViewEx& tree_;
    std::deque<NodeRef> sources_;
    NodeRef start_;
    NodeCollection shown_;
    std::deque<NodeRef> originals_;  // by the index of the shown node
    TreePane tvTargets_{shown_};
    UniqueImageList pictures_;
    NodeRef target_;
    bool copies_ = false;
};
