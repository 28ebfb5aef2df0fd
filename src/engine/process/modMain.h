#pragma once

#include <string>

#include "platform/Handles.h"

// The values that hold for the whole process. Start-up sets them, everybody reads them; there is one thread.

// The product's name: the main window's title, by which a second instance finds the first, and the
// application level of the settings store.
inline constexpr const wchar_t* AppName = L"NXClip";

// The directory of the program file, in upper case, with "\" at its end.
extern std::wstring AppPath;
// The format-set file, beside the program.
extern std::wstring FormatSetFile;
// The debug log is on. Log lines are written only while this is set; see LogDebug.
extern bool DebugMode;
// The first-start dialog is due.
extern bool FirstStartPending;
// The system started the program at the user's logon: it begins as an icon.
extern bool StartedByWindows;
// The diagnostics window is open.
extern bool DiagnosticsOpen;
// The list of the formats that other programs ask for is open and wants a line for each request.
extern bool RequestTrace;
// A modal dialog or a message box is open. Not told by itself: platform/Busy knows.
bool ModalDialogOpen() noexcept;

// More than its name says: `path` without blanks at its ends, IN UPPER CASE, with "\" appended when it has
// none there; an empty path gives "\". For a path as the user wrote it: WithBackslash (platform/Paths.h).
std::wstring AddBackslash(const std::wstring& path);

// True when a listing of `path` yields a name, be it a file's or a directory's. Never fails.
bool FileExists(const std::wstring& path);

// Puts the window above all others, or back among them. A refusal is told to the user.
void SetTopless(WindowHandle window, bool onTop);
