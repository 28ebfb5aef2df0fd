#pragma once

#include "windows/controls/Dialog.h"

// Asks for another name of a format set.
class frmChangeAlias : public Dialog {
 public:
    explicit frmChangeAlias(std::wstring oldName) : oldName_(std::move(oldName)) {}

    // The name that was confirmed.
    const std::wstring& NewName() const { return newName_; }

 private:
    void OnInit() override;
    void OnCommand(int control, int code) override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::ChangeAlias; }

    std::wstring oldName_;
    std::wstring newName_;
};
