#include "platform/FlushLater.h"

#include <deque>

#include "platform/Platform.h"

namespace {

std::deque<std::wstring>& Noted() {
    static std::deque<std::wstring> paths;
    return paths;
}

}  // namespace

void FlushLater(const std::wstring& path) {
    Noted().push_back(path);
}

bool AnyToFlush() {
    return !Noted().empty();
}

bool FlushNext() {
    FilePort& files = ThePlatform().files;
    std::deque<std::wstring>& noted = Noted();
    for (std::size_t tries = noted.size(); tries > 0; --tries) {
        const std::wstring path = noted.front();
        const bool flushed = files.FlushClosed(path, WhenHeld::GiveUp);
        if (!flushed && files.LastError() == kErrorSharingViolation) noted.push_back(path);
        noted.pop_front();
        if (flushed) return true;
    }
    return false;
}
