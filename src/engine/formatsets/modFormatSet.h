#pragma once

#include <string>
#include <vector>

#include "engine/formatsets/FormatSetList.h"

class CFormats;

// The one list of the process.
FormatSetList& FormatSets();

// Set by every change of a list, the dialog's working copy included; cleared by a successful load.
extern bool FormatSetsChanged;

// An empty list, unchanged.
void InitFormatSets();

// Reads the list from FormatSetFile, or makes the default sets when there is no such file. False after a read
// error: it has been told to the user, and the list holds the sets read whole before it.
bool LoadFormatSets();
// After a load that failed, and as long as nothing was changed since: reads the list again, without a word.
// True when there is nothing left to try.
bool LoadFormatSetsAgain();

// Writes the list to FormatSetFile if it was changed. A file that could not be read is kept as a copy first,
// which is told. False after an error, which has been told to the user; the file is as before then, unless
// the disk itself failed in the write.
bool SaveFormatSets();

// Puts the two default sets in the list.
void InitDefaultFormatSets();

// Adds sets for what programs of today put on the clipboard, each unless its combination is known already.
// The sets keep whatever can be kept.
void AddRecommendedFormatSets();

// Appends a set with the names of `formats`, all of them kept. The result is its index, -1 when there are no
// `formats` (null) or the list is full.
int AddFormatSet(FormatSetList& list, const CFormats* formats, const std::wstring& name);

// False for an index that is not in the list.
bool DeleteFormatSet(FormatSetList& list, int index);

// The index of the first set whose key is that of `formats`; 0 when there is none or `formats` is null.
int FindFormatSet(const FormatSetList& list, const CFormats* formats);

// Whether the set of the process-wide list keeps a format; false for an unknown set or name.
bool GetFormatSaveFlag(int index, const std::wstring& formatName);

// Whether the option UnknownFormats keeps a format of a clipboard that matches no set.
bool IsKeptUnknownFormat(const std::wstring& formatName);

// The key of a set with these entries, which are put into the key's order.
std::wstring BuildFormatSetKey(std::vector<FormatSetEntry>& entries);
// The key of a clipboard's formats.
std::wstring FormatsKey(const CFormats& formats);
