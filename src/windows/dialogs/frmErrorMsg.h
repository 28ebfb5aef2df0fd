#pragma once

#include "engine/clipboard/CClipBoard.h"
#include "windows/controls/Dialog.h"

// A small list beside the main window. It lists the clipboard's formats as they are now and, from then on,
// each step of answering what other programs ask for.
class frmErrorMsg : public Dialog {
 public:
    explicit frmErrorMsg(CClipBoard& clipBoard) : clipBoard_(clipBoard) {}

 private:
    void OnInit() override;
    void OnCommand(int control, int code) override;
    void OnClosed() override;
    HelpTopic Topic() const override { return HelpTopic::FormatQuery; }

    void cbRefresh_Click();
    void AddLine(const std::wstring& line);

    CClipBoard& clipBoard_;
};
