#pragma once

#include <array>

#include "engine/views/OptionRules.h"
#include "windows/controls/Dialog.h"

// The options, on four pages. OK takes them over as a whole; the main window applies them then.
class frmOption : public Dialog {
 private:
    // One page: its controls report to the form.
    class Page : public Dialog {
     public:
        explicit Page(frmOption& form) : form_(form) {}

     private:
        void OnCommand(int control, int code) override { form_.OnCommand(control, code); }
        bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

        frmOption& form_;
    };

    void OnInit() override;
    void OnCommand(int control, int code) override;
    LRESULT OnNotify(NMHDR& header) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::Options; }
    HWND Control(int control) const override;

    void CreatePages();
    void ShowPage(int page, bool focus);
    // Ctrl+Tab and Ctrl+Page go from page to page, as in every window with tabs. The dialog's message loop is
    // the system's own, so its messages are looked at by a hook while the dialog is open.
    static LRESULT CALLBACK LookAtMessage(int code, WPARAM wParam, LPARAM lParam);
    bool TurnPage(const MSG& message);
    void FilterTextBoxes();
    void ShowControls(const OptionControls& controls);
    OptionControls ReadControls() const;
    void LeaveTextBox(int textBox);
    void cbFile_Click();
    void chkSaveAll_Click();

    HHOOK messageHook_ = nullptr;
    std::array<Page, 5> pages_{Page(*this), Page(*this), Page(*this), Page(*this), Page(*this)};
};
