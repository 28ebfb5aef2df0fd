#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "contract/Home.h"

// A second process with a window, which copies to the clipboard and reads from it as any program does. It is
// this test program once more, which sees by its command line that it is to play that part.
class OtherProgram {
 public:
    // The one of this test run, started with its first use. It ends with this process.
    static OtherProgram& Instance();

    HWND Window() const { return window_; }
    void Copy(const std::vector<Home::FormatBytes>& formats);
    std::optional<std::string> Read(FormatNumber format);
    void Hold();
    void Release();

 private:
    OtherProgram();
    void Command(ULONG_PTR command, const void* bytes, std::size_t size);

    HWND window_ = nullptr;
};

// For the other process: what SetClipboardData takes, and the bytes of a format of the opened clipboard. Of a
// metafile picture these are its bits alone.
HANDLE OtherData(UINT format, const std::string& bytes);
std::optional<std::string> OtherBytes(UINT format);
