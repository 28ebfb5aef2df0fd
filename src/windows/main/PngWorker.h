#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

#include "engine/clipboard/CFormat.h"
#include "engine/views/PreviewData.h"
#include "platform/win32/SystemHandles.h"

// Decodes large PNG pictures in a thread, one at a time: what is not wanted any more is broken off, and the
// next one begins when it has ended, so that there is never more than one in memory.
class PngWorker {
 public:
    PngWorker() = default;
    // Waits a moment for what is still under way.
    ~PngWorker();
    PngWorker(const PngWorker&) = delete;
    PngWorker& operator=(const PngWorker&) = delete;

    // Who gets the message whenever a picture has come to its end.
    void SetListener(HWND window, UINT message);
    // Only this one is wanted from now on. Others keep all their rights to the clip's file meanwhile. False
    // when the system has no thread left.
    bool Start(const std::wstring& clipFile, const CFormat& format);
    void Stop();
    bool IsAtWork() const { return wanted_ != nullptr; }

    struct Answer {
        // None when it could not be decoded.
        std::optional<PreviewBytes> dib;
    };
    // To be called at the message. None as long as what is wanted is not ready.
    std::optional<Answer> Take();

 private:
    struct Job;
    bool Launch();
    static DWORD WINAPI Run(void* parameter) noexcept;

    HWND window_ = nullptr;
    UINT message_ = 0;
    std::shared_ptr<Job> wanted_;
    std::shared_ptr<Job> running_;
    UniqueThread thread_;  // of what is running
};
