#pragma once

#include <string>

#include "engine/views/CFilters.h"
#include "windows/controls/Dialog.h"
#include "windows/controls/DirectoryList.h"

// Lets the user choose a file among those that a filter lists.
class frmFileSel : public Dialog {
 public:
    // An empty `title` keeps the form's own caption.
    frmFileSel(std::wstring title, CFilters filters)
        : title_(std::move(title)), filters_(std::move(filters)) {}

    // The chosen file's full path; empty when the dialog was cancelled.
    const std::wstring& File() const { return chosen_; }

 private:
    void OnInit() override;
    void OnResolution() override { directories_.FitLines(); }
    void OnCommand(int control, int code) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::FileChooser; }

    void FillFiles();
    std::wstring SelectedFile() const;
    void TypedPathConfirmed();
    // Confirms the file; an empty one is asked for.
    void Choose(const std::wstring& file);

    std::wstring title_;
    CFilters filters_;
    std::wstring chosen_;
    DirectoryList directories_;
};
