#pragma once

#include "engine/tree/CTreeViewEx.h"
#include "windows/controls/Dialog.h"

// The properties of a profile. For a new one it asks for name, directory and template; for an existing one
// the directory stands fixed and its contents are counted.
class frmProfileProp : public Dialog {
 public:
    // The dialog for a new profile. The members below hold what was confirmed.
    explicit frmProfileProp(CTreeViewEx& tree) : tree_(tree), profile_(nullptr) {}
    // The dialog for an existing profile; OK changes and saves it, unless the lock makes the dialog
    // read-only. Neither is owned; both outlive the dialog.
    frmProfileProp(CTreeViewEx& tree, Node& profile) : tree_(tree), profile_(&profile) {}

    const std::wstring& Name() const { return name_; }
    const std::wstring& Directory() const { return directory_; }
    // The template file's full path; empty for an empty profile.
    const std::wstring& TemplateFile() const { return templateFile_; }
    const std::wstring& Info() const { return info_; }
    bool GlobalFree() const { return globalFree_; }

 private:
    void OnInit() override;
    void OnCommand(int control, int code) override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::ProfileProperties; }

    void InitNew();
    void InitExisting();
    void tbName_Change();
    void cbDir_Click();
    void cb_template_Click();
    void OnlyRead();

    CTreeViewEx& tree_;
    Node* profile_;
    std::wstring name_;
    std::wstring directory_;
    std::wstring templateFile_;
    std::wstring info_;
    bool globalFree_ = false;
    bool locked_ = false;
    std::wstring templateInfo_;
};
