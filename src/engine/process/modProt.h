#pragma once

#include <string>

// The debug log: "protokol.txt" beside the program, one line for each event.

// Deletes the log if there is one. A failure is told to the user.
void ResetLog();

// Appends one line: date and time, ": " and the message. The file is opened and closed for every line, so
// that a crash leaves every line on disk. Errors are ignored; the result is always true.
bool WriteLog(const std::wstring& message);

// WriteLog, but only while DebugMode is on: what every caller wants.
void LogDebug(const std::wstring& message);
