#pragma once

#include <string>
#include <utility>

#include "engine/flows/LongWork.h"
#include "windows/controls/Dialog.h"

// Shows how far a long work has come and lets the user stop it. The work goes on while the dialog is open, a
// little at a time, so that the program answers meanwhile; confirmed means that it came to its end.
class frmProgress : public Dialog {
 public:
    // Not owned; must live as long.
    frmProgress(std::wstring title, LongWork& work) : title_(std::move(title)), work_(work) {}

 private:
    void OnInit() override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnOk() override {}
    void OnCancel() override;
    HelpTopic Topic() const override { return HelpTopic::Files; }

    void GoOn();
    void ShowHowFar();

    const std::wstring title_;
    LongWork& work_;
};

// Does the work to its end, and shows the dialog when that takes longer than a moment. False when the user
// stopped it.
bool DoLongWork(HWND owner, const std::wstring& title, LongWork& work);
