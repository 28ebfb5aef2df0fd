#pragma once

#include <cstdint>

// The platform's handles as the engine sees them: opaque, told apart by the compiler, zero is "none".
// Each holds the real handle's bits; only the ports look inside.

// A window; also the owner of the clipboard and a member of the viewer chain.
enum class WindowHandle : std::uintptr_t { None = 0 };

// What stands behind a clipboard format: usually a moveable global memory block, for some formats a GDI
// object.
enum class DataHandle : std::uintptr_t { None = 0 };

// An open file.
enum class FileHandle : std::uintptr_t { None = 0 };

// A window procedure's address.
enum class ProcedureAddress : std::uintptr_t { None = 0 };
