#include "ui/SetClipFlow.h"

#include "app/modOption.h"
#include "clipboard/modClipboard.h"
#include "clipboard/modViewerHook.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "tree/modTreeEx.h"
#include "ui/StoredClip.h"

void SetClipFlow::SetClip() {
    const Node* const node = host_.Nodes().Selected();
    if (!IsClipNode(node)) return;
    try {
        const StoredClip clip = StoredClipOf(*node);
        if (clip.path.empty() || !RestoreClip(clipBoard_, clip.path, clip.formatCount)) return;
    } catch (const RuntimeError& error) {
        ThePlatform().user.Tell(error.Description());
        return;
    }
    if (Options().SetBeep) ThePlatform().user.Beep();
    if (Options().IconAfterSetClip) {
        host_.Minimise();
        RestoreForeground();
    }
}
