#pragma once

#include <map>
#include <optional>
#include <string>

// The program's part of the registry: two sections of texts. Section and key as the program names them.

void ClearSettings();
void WriteSetting(const std::wstring& section, const std::wstring& key, const std::wstring& value);
// None when the key is missing, or holds anything but a text.
std::optional<std::wstring> ReadSetting(const std::wstring& section, const std::wstring& key);
// All texts of a section.
std::map<std::wstring, std::wstring> SettingsOf(const std::wstring& section);
