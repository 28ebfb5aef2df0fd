#include "engine/flows/SetClipFlow.h"

#include "engine/clipboard/modViewerHook.h"
#include "engine/process/modOption.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Platform.h"

void SetClipFlow::SetClip() {
    SetClip(host_.Nodes().Selected());
}

void SetClipFlow::SetClip(const Node* node) {
    SetClip(node, {});
}

void SetClipFlow::SetClip(const Node* node, const FormatFilter& wanted) {
    if (!IsClipNode(node)) return;
    const std::wstring path = ClipFileOf(node);
    if (path.empty()) {
        ThePlatform().user.Status(L"Die Datei des Clips konnte nicht ermittelt werden.");
        return;
    }
    if (!RestoreClip(clipBoard_, host_.Window(), path, AttributesOf(node).formatCount, wanted)) return;
    if (Options().SetBeep) ThePlatform().user.Beep();
    if (Options().IconAfterSetClip) {
        host_.Minimise();
        RestoreForeground();
    }
}
