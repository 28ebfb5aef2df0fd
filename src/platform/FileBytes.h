#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Handles.h"

// Whole files as bytes, over the file port in force. Both throw RuntimeError with the cause.

// All bytes of the file, which must exist.
std::vector<std::uint8_t> ReadWholeFile(const std::wstring& path);

// Writes `image` over the start of the file, which is created when missing and never shortened: what was
// longer keeps its tail. The room is made first, so that a full disk is noticed before the old content is
// touched, and the image then goes out in one write.
void WriteFileInPlace(const std::wstring& path, const std::vector<std::uint8_t>& image);

// An open file that is closed at the end of its scope.
class OpenFile {
 public:
    explicit OpenFile(FileHandle file) : file_(file) {}
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    FileHandle Handle() const { return file_; }
    bool IsOpen() const { return file_ != FileHandle::None; }

 private:
    FileHandle file_;
};
