#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Handles.h"
#include "platform/UniqueHandle.h"

// Whole files as bytes, over the file port in force.

// All bytes of the file, which must exist. Throws RuntimeError with the cause.
std::vector<std::uint8_t> ReadWholeFile(const std::wstring& path);

// An open file that is closed at the end of its scope.
struct ClosedByFilePort {
    using Handle = FileHandle;
    static FileHandle None() { return FileHandle::None; }
    static void Close(FileHandle file);
};
using FileOwner = UniqueHandle<ClosedByFilePort>;
