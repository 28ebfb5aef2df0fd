#pragma once

#include <string>
#include <vector>

#include "engine/clipboard/CFormat.h"

// Asks the owner of the open clipboard for data, within bounds: while he is asked nobody else can open the
// clipboard, and he may take half a minute for each format.

// The owner of the clipboard takes messages, as seen within a fraction of a second; or nobody owns it.
bool OwnerAnswers();

// Notes in each of `formats` what the clipboard gave for it, the cheap ones first. An owner that takes no
// messages is not asked, nor one that has had his time; what he let wait in vain is asked for once more at
// the end. Returns the names of what he owes, in the order of `formats`: not of what he refused at once.
std::vector<std::wstring> RequestData(const std::vector<CFormat*>& formats);
