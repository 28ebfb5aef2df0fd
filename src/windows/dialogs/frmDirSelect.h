#pragma once

#include <string>

#include "windows/controls/Dialog.h"
#include "windows/controls/DirectoryList.h"

// Lets the user choose a directory, or make one.
class frmDirSelect : public Dialog {
 public:
    // An empty `title` keeps the form's own caption; `start` is where the list stands first.
    frmDirSelect(std::wstring title, std::wstring start)
        : title_(std::move(title)), start_(std::move(start)) {}

    // The chosen directory; empty when the dialog was cancelled.
    const std::wstring& Directory() const { return chosen_; }

 private:
    void OnInit() override;
    void OnResolution() override { directories_.FitLines(); }
    void OnCommand(int control, int code) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::DirectoryChooser; }

    void cbNew_Click();
    // What was typed as the path becomes the open directory; false, and the user knows why, when it cannot.
    bool GoToTyped();

    std::wstring title_;
    std::wstring start_;
    std::wstring chosen_;
    DirectoryList directories_;
};
