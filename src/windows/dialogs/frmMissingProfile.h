#pragma once

#include <string>

#include "engine/profiles/ProfileAttachment.h"
#include "windows/controls/Dialog.h"

// What is to become of a listed profile whose directory is gone. Escape keeps it.
class frmMissingProfile : public Dialog {
 public:
    frmMissingProfile(std::wstring name, std::wstring directory)
        : name_(std::move(name)), directory_(std::move(directory)) {}

    const MissingProfileAnswer& Answer() const { return answer_; }

 private:
    void OnInit() override;
    void OnCommand(int control, int code) override;
    HelpTopic Topic() const override { return HelpTopic::Profiles; }

    void cbWhere_Click();

    std::wstring name_;
    std::wstring directory_;
    MissingProfileAnswer answer_;
};
