#pragma once

#include <windows.h>

#include <string>

// Opens a file with what the user opens such files with, or starts a program; false when that fails.
bool OpenByShell(HWND owner, const std::wstring& file);
