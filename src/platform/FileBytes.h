#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Handles.h"

// Whole files as bytes, over the file port in force.

// All bytes of the file, which must exist. Throws RuntimeError with the cause.
std::vector<std::uint8_t> ReadWholeFile(const std::wstring& path);

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
