#pragma once

#include "engine/process/OptionValues.h"

// The one set of option values of the process.
OptionValues& Options();

// Puts every option to its reset value.
void SetDefaultOptions();

// Reads the options from the store in their order. An entry that does not convert ends the reading: the
// options before it keep what was read, it and the later ones keep what they had. That is told in debug mode
// only; the entry is replaced when the options are saved. A KeyActivate of other than one character becomes
// "L".
void LoadOptions();

// Writes all options but AutoSnap to the store in their order. False when one of them could not be written.
bool SaveOptions();

// Sets the options that serve best whoever has not chosen yet: every format is kept, clips are named after
// their text and taken without a dialog, and nothing is taken twice in a row; the program runs by itself and
// is at hand by its hot key.
void SetRecommendedOptions();

// The one argument with which the system starts the program: as an icon, and without a greeting.
inline constexpr const wchar_t* kStartedByWindows = L"ICON";
// Tells the system what the option StartWithWindows says. A failure is told to the user.
void ApplyStartWithWindows();

// True once and never again, also in later runs: for what the user is told a single time.
bool TellsForTheFirstTime(const std::wstring& key);

// Sets the search criteria to what they are at the start of a run.
void InitSearchOptions();
