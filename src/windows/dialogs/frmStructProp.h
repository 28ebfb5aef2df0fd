#pragma once

#include <functional>
#include <string>

#include "windows/controls/Dialog.h"

// The properties of a folder, or of one that is to be made: its name and info text.
class frmStructProp : public Dialog {
 public:
    // OK was pressed with this name and info; the dialog stays open when the result is false. An empty one
    // makes it a dialog to read.
    using Confirm = std::function<bool(const std::wstring& name, const std::wstring& info)>;

    frmStructProp(std::wstring name, std::wstring info, Confirm confirm)
        : name_(std::move(name)), info_(std::move(info)), confirm_(std::move(confirm)) {}

 private:
    void OnInit() override;
    void OnCommand(int control, int code) override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::FolderProperties; }

    void tbName_Change();

    std::wstring name_;
    std::wstring info_;
    Confirm confirm_;
};
