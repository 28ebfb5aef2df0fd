#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

// A copy of an extended dialog template of the resources with the system's message font in place of its own,
// so that every dialog looks, and is sized, as the user has set. Empty when there is no such template.
std::vector<std::byte> DialogTemplateInSystemFont(int dialogTemplate);
