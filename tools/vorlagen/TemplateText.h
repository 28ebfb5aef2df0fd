#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The readable source of a profile template (vorlagen/README.md) and the tree data file that is made of it.

// The file's image of the template that `source`, UTF-8, describes. The tree is built, flattened and encoded
// by the program's own code, so that a template cannot differ from what the program writes. Throws
// std::runtime_error, with the line's number, for a text of another form.
std::vector<std::uint8_t> TemplateFromText(const std::string& source);
