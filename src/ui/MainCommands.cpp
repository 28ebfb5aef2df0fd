#include "ui/MainCommands.h"

#include "tree/modTreeEx.h"

CommandState CommandsFor(const Node* selected, const Node* activeContainer, bool locked) {
    const bool clip = IsClipNode(selected);
    const bool container = IsProfileNode(selected) || IsStructureNode(selected);
    CommandState state;
    state.snap = activeContainer != nullptr && !locked;
    state.toClipboard = clip;
    state.remove = (clip || container) && !locked;
    state.rename = state.remove;
    state.properties = clip || container;
    state.newFolder = container && !locked;
    state.newProfile = !locked;
    state.activate = container && selected != activeContainer;
    return state;
}

ImageValue PictureOf(const Node& node, const Node* activeContainer) {
    if (&node == activeContainer) return std::wstring(L"Camera");
    if (IsProfileNode(&node)) return std::wstring(L"Profile");
    if (IsStructureNode(&node)) return std::wstring(L"Structure");
    if (IsClipNode(&node)) return std::wstring(L"Clip");
    return node.Image();
}
