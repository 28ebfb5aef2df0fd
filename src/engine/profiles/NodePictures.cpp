#include "engine/profiles/NodePictures.h"

#include "engine/tree/modTreeEx.h"

namespace {

const ImageValue& Camera() {
    static const ImageValue camera(std::wstring(L"Camera"));
    return camera;
}

}  // namespace

std::wstring KindImage(const Node* node) {
    if (IsProfileNode(node)) return L"Profile";
    if (IsStructureNode(node)) return L"Structure";
    return IsClipNode(node) ? L"Clip" : L"";
}

void ShowKind(Node& node) {
    node.SetImage(KindImage(&node));
}

void ShowAsActive(Node& node) {
    node.SetImage(Camera());
}

bool IsShownAsActive(const Node& node) {
    return node.Image() == Camera();
}
