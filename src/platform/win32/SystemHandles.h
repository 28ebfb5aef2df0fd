#pragma once

#include <windows.h>

#include "platform/Handles.h"
#include "platform/UniqueHandle.h"

// The engine's handles and the system's, and the owners of the system's.

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

// A kind of handle that one call closes; null is none.
template <typename HandleType, auto CloseCall>
struct ClosedByCall {
    using Handle = HandleType;
    static Handle None() { return nullptr; }
    static void Close(Handle handle) { CloseCall(handle); }
};
using UniqueRegistryKey = UniqueHandle<ClosedByCall<HKEY, &RegCloseKey>>;
using UniqueThread = UniqueHandle<ClosedByCall<HANDLE, &CloseHandle>>;
using UniqueLibrary = UniqueHandle<ClosedByCall<HMODULE, &FreeLibrary>>;
using UniqueFont = UniqueHandle<ClosedByCall<HFONT, &DeleteObject>>;
using UniqueBitmap = UniqueHandle<ClosedByCall<HBITMAP, &DeleteObject>>;
using UniqueIcon = UniqueHandle<ClosedByCall<HICON, &DestroyIcon>>;

// Files and searches have a number of their own for none.
template <auto CloseCall>
struct ClosedFileByCall {
    using Handle = HANDLE;
    static Handle None() { return INVALID_HANDLE_VALUE; }
    static void Close(Handle handle) { CloseCall(handle); }
};
using UniqueFile = UniqueHandle<ClosedFileByCall<&CloseHandle>>;
using UniqueFind = UniqueHandle<ClosedFileByCall<&FindClose>>;
