#pragma once

#include <string>
#include <vector>

#include "engine/flows/Templates.h"
#include "engine/tree/CTreeViewEx.h"
#include "windows/controls/Dialog.h"
#include "windows/controls/Pictures.h"
#include "windows/controls/TreePane.h"

// Lets the user choose a profile template, with a look at the folders that it holds.
class frmSelectTemplate : public Dialog {
 public:
    frmSelectTemplate() { tree_.Bind(&nodes_); }

    // The chosen template's full path; empty when the dialog was cancelled.
    const std::wstring& TemplateFile() const { return chosen_; }
    // What it brings along.
    const TemplatePreview& Preview() const { return preview_; }

 private:
    void OnInit() override;
    void OnResolution() override;
    void OnCommand(int control, int code) override;
    LRESULT OnNotify(NMHDR& header) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::Templates; }

    void lstTemplate_Click();
    std::wstring Selected() const;

    NodeCollection nodes_;
    CTreeViewEx tree_;
    TreePane tvTreeView_{nodes_};
    UniqueImageList pictures_;
    std::vector<std::wstring> files_;
    std::wstring chosen_;
    TemplatePreview preview_;
};
