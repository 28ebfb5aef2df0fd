#pragma once

#include <string>

// Files that were written, are closed, and stand in the system's cache alone for now. Flushing one takes as
// long as the disk wants, so it is left to the moments when nobody waits.

// Notes a file. One that is removed again costs nothing.
void FlushLater(const std::wstring& path);

// Brings one of the noted files onto the disk for good. False when there is none left, or only such as others
// hold at the moment: these are tried again by the next calls.
bool FlushNext();
// True when noted files are left.
bool AnyToFlush();
