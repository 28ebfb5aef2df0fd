#pragma once

#include <string>

#include "windows/controls/Dialog.h"

// Asks for the name of a new directory. Enter confirms it, Escape leaves it empty.
class frmTextInput : public Dialog {
 public:
    // The text that was confirmed; empty when the dialog was cancelled.
    const std::wstring& Text() const { return text_; }

 private:
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::NamePrompt; }

    std::wstring text_;
};
