#pragma once

#include "engine/flows/Templates.h"
#include "windows/controls/Dialog.h"

// Greets at the first start and offers ready-made profiles.
class frmFirstStart : public Dialog {
 public:
    // What was confirmed.
    const FirstStartChoice& Choice() const { return choice_; }
    // The recommended settings are in force.
    bool Recommended() const { return recommended_; }

 private:
    void OnInit() override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::FirstStart; }

    FirstStartChoice choice_;
    bool recommended_ = false;
};
