#pragma once

#include <functional>
#include <optional>

#include "engine/clipboard/CClipBoard.h"
#include "platform/Files.h"
#include "windows/controls/Dialog.h"

// Shows the state of the viewer chain and the hook, and what the clipboard holds. Stands beside the main
// window.
class frmDiagnose : public Dialog {
 public:
    // `lastUpdate` tells when a capture last looked at the clipboard. Neither is owned.
    frmDiagnose(CClipBoard& clipBoard, std::function<std::optional<FileTime>()> lastUpdate)
        : clipBoard_(clipBoard), lastUpdate_(std::move(lastUpdate)) {}

 private:
    void OnInit() override;
    void OnCommand(int control, int code) override;
    void OnClosed() override;
    HelpTopic Topic() const override { return HelpTopic::Diagnosis; }

    void cbRefresh_Click();
    void FillFormats();

    CClipBoard& clipBoard_;
    std::function<std::optional<FileTime>()> lastUpdate_;
};
