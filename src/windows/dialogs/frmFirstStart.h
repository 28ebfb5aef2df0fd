#pragma once

#include <array>

#include "engine/flows/Templates.h"
#include "windows/controls/Dialog.h"

// Greets at the first start and offers ready-made profiles.
class frmFirstStart : public Dialog {
 public:
    // What was confirmed.
    const std::array<bool, kFirstStartTemplateCount>& Templates() const { return templates_; }
    bool BoxChecked() const { return boxChecked_; }

 private:
    void OnInit() override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::FirstStart; }

    std::array<bool, kFirstStartTemplateCount> templates_{};
    bool boxChecked_ = false;
};
