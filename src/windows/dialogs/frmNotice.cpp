#include "windows/dialogs/frmNotice.h"

#include <algorithm>

#include "platform/Platform.h"
#include "resources/controls.h"

void frmNotice::Add(const std::wstring& text) {
    if (std::find(texts_.begin(), texts_.end(), text) != texts_.end()) return;
    texts_.push_back(text);
    next_();
}

void frmNotice::ShowNext(HWND owner) {
    if (Window() != nullptr || texts_.empty()) return;
    const std::wstring text = texts_.front();
    if (ShowNotice(owner, IDD_frmNotice) != nullptr) return;
    std::erase(texts_, text);
    ThePlatform().user.Status(text);
}

void frmNotice::OnInit() {
    SetText(lblNotice, texts_.front());
}

void frmNotice::OnClosed() {
    texts_.pop_front();
    if (!texts_.empty()) next_();
}
