#pragma once

#include <string>
#include <vector>

#include "platform/Paths.h"

// The rules of the choosers for directories and files.

// What a chooser takes for the drive of a full path: "c:", or "\\server\share".
std::wstring DriveOf(const std::wstring& path);
// The directories from the drive's root down to `path`, both included.
std::vector<std::wstring> DirectoriesDownTo(const std::wstring& path);

// The drive that a chooser stands on after the user chose `drive` (such as "a:") and it proved `readable` or
// not. An unreadable one is told to the user, and it is "c:" then.
std::wstring DriveAfterChange(const std::wstring& drive, bool readable);

// The full path that a user typed or pasted, without the quotation marks that others put around it, a drive
// alone as its root; empty when it is none, which is told to the user.
std::wstring TypedPath(const std::wstring& text);
void TellNoSuchPath(const std::wstring& path);

// True when a file name matches one of the patterns, which are separated by ";" and hold "*" and "?". Case
// does not matter.
bool MatchesPattern(const std::wstring& name, const std::wstring& patterns);

// Makes the directory `name` inside `parent` and returns its full path; empty after a failure, which is told
// to the user.
std::wstring MakeDirectoryIn(const std::wstring& parent, const std::wstring& name);
