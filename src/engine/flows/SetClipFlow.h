#pragma once

#include <cstdint>
#include <string>

#include "engine/clipboard/CClipBoard.h"
#include "engine/clipboard/modClipboard.h"
#include "engine/flows/MainWindowHost.h"

// Puts the selected clip on the clipboard: its formats are announced, their data is read when another program
// asks for it.
class SetClipFlow {
 public:
    // Neither is owned; both live as long as the flow.
    SetClipFlow(MainWindowHost& host, CClipBoard& clipBoard) : host_(host), clipBoard_(clipBoard) {}

    // Works on the selected node; does nothing when that is no clip.
    void SetClip();
    // The same for any node, null for none.
    void SetClip(const Node* node);
    // With those of its formats alone that are `wanted`; with all of them where that is empty.
    void SetClip(const Node* node, const FormatFilter& wanted);

 private:
    MainWindowHost& host_;
    CClipBoard& clipBoard_;
};
