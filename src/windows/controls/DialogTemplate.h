#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

// A copy of an extended dialog template of the resources with the system's message font in place of its own,
// so that every dialog looks, and is sized, as the user has set. Where the owner's monitor is too small for
// that, the font is smaller, and the whole dialog with it. A template of a child takes the font of `owner`,
// the dialog that it becomes a page of. Empty when there is no such template.
std::vector<std::byte> DialogTemplateInSystemFont(int dialogTemplate, HWND owner);
