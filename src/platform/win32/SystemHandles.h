#pragma once

#include <windows.h>

#include "platform/Handles.h"
#include "platform/win32/UniqueHandle.h"

// The engine's handles and the system's, and the owners of those that a port keeps for the length of a call.

inline HWND SystemWindow(WindowHandle window) {
    return reinterpret_cast<HWND>(window);
}

inline WindowHandle EngineWindow(HWND window) {
    return static_cast<WindowHandle>(reinterpret_cast<std::uintptr_t>(window));
}

inline HANDLE SystemData(DataHandle data) {
    return reinterpret_cast<HANDLE>(data);
}

inline DataHandle EngineData(HANDLE data) {
    return static_cast<DataHandle>(reinterpret_cast<std::uintptr_t>(data));
}

inline HANDLE SystemFile(FileHandle file) {
    return reinterpret_cast<HANDLE>(file);
}

inline FileHandle EngineFile(HANDLE file) {
    return static_cast<FileHandle>(reinterpret_cast<std::uintptr_t>(file));
}

struct FileTraits {
    using Handle = HANDLE;
    static HANDLE None() { return INVALID_HANDLE_VALUE; }
    static void Close(HANDLE file) { CloseHandle(file); }
};
using UniqueFile = UniqueHandle<FileTraits>;

struct FindTraits {
    using Handle = HANDLE;
    static HANDLE None() { return INVALID_HANDLE_VALUE; }
    static void Close(HANDLE find) { FindClose(find); }
};
using UniqueFind = UniqueHandle<FindTraits>;

struct RegistryKeyTraits {
    using Handle = HKEY;
    static HKEY None() { return nullptr; }
    static void Close(HKEY key) { RegCloseKey(key); }
};
using UniqueRegistryKey = UniqueHandle<RegistryKeyTraits>;
