#include "desktop/Settings.h"

#include <windows.h>

#include <vector>

#include "desktop/Wait.h"

namespace {

constexpr wchar_t kRoot[] = L"Software\\NXClip";

std::wstring PathOf(const std::wstring& section) {
    return std::wstring(kRoot) + L"\\" + section;
}

}  // namespace

void ClearSettings() {
    const LSTATUS status = RegDeleteTreeW(HKEY_CURRENT_USER, kRoot);
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
        throw DriverError("cannot clear the settings, error " + std::to_string(status));
    }
}

void WriteSetting(const std::wstring& section, const std::wstring& key, const std::wstring& value) {
    const LSTATUS status =
        RegSetKeyValueW(HKEY_CURRENT_USER, PathOf(section).c_str(), key.c_str(), REG_SZ, value.c_str(),
                        static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    if (status != ERROR_SUCCESS) throw DriverError("cannot write a setting, error " + std::to_string(status));
}

std::optional<std::wstring> ReadSetting(const std::wstring& section, const std::wstring& key) {
    std::wstring value(4096, L'\0');
    DWORD size = static_cast<DWORD>(value.size() * sizeof(wchar_t));
    if (RegGetValueW(HKEY_CURRENT_USER, PathOf(section).c_str(), key.c_str(), RRF_RT_REG_SZ, nullptr,
                     value.data(), &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return std::wstring(value.c_str());
}

std::map<std::wstring, std::wstring> SettingsOf(const std::wstring& section) {
    std::map<std::wstring, std::wstring> settings;
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, PathOf(section).c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return settings;
    }
    for (DWORD index = 0;; ++index) {
        wchar_t name[256];
        DWORD length = static_cast<DWORD>(std::size(name));
        if (RegEnumValueW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        if (const auto value = ReadSetting(section, name)) settings[name] = *value;
    }
    RegCloseKey(key);
    return settings;
}
