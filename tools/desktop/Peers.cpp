#include "desktop/Peers.h"

#include <filesystem>

namespace {

std::filesystem::path BesideThisProgram(const wchar_t* name) {
    wchar_t own[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    return std::filesystem::path(own).parent_path() / name;
}

}  // namespace

Peer::Peer(const std::wstring& kind)
    : process_(L'"' + BesideThisProgram(L"peer.exe").wstring() + L"\" " + kind) {
    process_.MayEnd();
    const std::wstring title = L"peer " + std::to_wstring(process_.Id());
    window_ = WaitFor("a peer to be ready", [&] { return Window(FindWindowW(kPeerClass, title.c_str())); });
}

int Peer::Told() const {
    return static_cast<int>(window_.Send(kPeerTold));
}

int Peer::ToldOfLeavings() const {
    return static_cast<int>(window_.Send(kPeerToldOfLeavings));
}

void Peer::Copy(int number, int privateFormats, int delay) const {
    window_.Send(kPeerCopy, static_cast<WPARAM>(number), MAKELPARAM(privateFormats, delay));
}

void Peer::Hang(int milliseconds) const {
    window_.Post(kPeerHang, static_cast<WPARAM>(milliseconds));
}

void Peer::Leave() const {
    window_.Send(kPeerLeave);
}
