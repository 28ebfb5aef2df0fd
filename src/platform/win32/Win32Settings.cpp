#include "platform/win32/Win32Settings.h"

#include "platform/win32/SystemHandles.h"

std::wstring Win32Settings::Read(const std::wstring& section, const std::wstring& key,
                                 const std::wstring& absent) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, PathOf(section).c_str(), 0, KEY_QUERY_VALUE, &opened) !=
        ERROR_SUCCESS)
        return absent;
    const UniqueRegistryKey registryKey(opened);
    DWORD size = 0;
    std::wstring value;
    LSTATUS status = RegGetValueW(opened, nullptr, key.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &size);
    if (status != ERROR_SUCCESS) return absent;
    do {  // the value may grow between the two calls
        value.resize(size / sizeof(wchar_t) + 1);
        size = static_cast<DWORD>(value.size() * sizeof(wchar_t));
        status = RegGetValueW(opened, nullptr, key.c_str(), RRF_RT_REG_SZ, nullptr, value.data(), &size);
    } while (status == ERROR_MORE_DATA);
    if (status != ERROR_SUCCESS) return absent;
    return value.substr(0, value.find(L'\0'));
}

bool Win32Settings::Write(const std::wstring& section, const std::wstring& key, const std::wstring& value) {
    HKEY created = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, PathOf(section).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                        &created, nullptr) != ERROR_SUCCESS)
        return false;
    const UniqueRegistryKey registryKey(created);
    const std::wstring text = value.substr(0, value.find(L'\0'));
    const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(created, key.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                          size) == ERROR_SUCCESS;
}

bool Win32Settings::DeleteValue(const std::wstring& section, const std::wstring& key) {
    const LSTATUS status = RegDeleteKeyValueW(HKEY_CURRENT_USER, PathOf(section).c_str(), key.c_str());
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}
