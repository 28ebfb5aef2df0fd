#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileBytes.h"
#include "platform/Files.h"
#include "platform/Handles.h"

// Clip data files, as the clipboard engine uses them. Layout: docs/formats/clip-nxc.md.

// None without a word when the file must exist and does not; else like CreateClipFile.
FileHandle OpenClipFile(const std::wstring& name, bool forWrite, bool mustExist);
// Opens a clip's file. For writing it must not exist yet, since another program may have made it meanwhile;
// for reading it must. A failure is told to the user with the system's code, and the result is None.
FileHandle CreateClipFile(const std::wstring& name, bool forWrite);
// Closes the file and clears the caller's handle. None is no harm.
void CloseClipFile(FileHandle& file);
// The position in bytes from the start; none on an error.
std::optional<std::int64_t> TellClipFile(FileHandle file);
bool SeekClipFile(FileHandle file, std::int64_t position);
// The bytes between the position and the end; 0 behind the end, none on an error.
std::optional<std::int64_t> RemainingInClipFile(FileHandle file);

// Where `bytes` stand first in a memory block, counted from 0; none when they do not.
std::optional<std::size_t> FindByte(const void* block, std::size_t size, std::string_view bytes);
