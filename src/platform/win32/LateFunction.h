#pragma once

#include <windows.h>

// A function that is looked up in its library when it is first needed: one of a system newer than the oldest
// that the program starts on, or of a library that most starts never need, and that takes milliseconds to
// load. Null when there is none. The library stays.
template <typename Function>
Function LateFunction(const wchar_t* library, const char* name) {
    const HMODULE module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (module == nullptr) return nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}
