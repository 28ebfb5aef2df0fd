#include "platform/win32/Win32Settings.h"

#include <algorithm>

namespace {

constexpr const wchar_t* kRunAtLogon = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";

}  // namespace

// Most reads are of one section: it stays open, for reading alone, until it is gone or another one is read.
bool Win32Settings::OpenForReading(const std::wstring& section) {
    if (opened_.IsSet() && openedSection_ == section) return true;
    opened_.Reset();
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, PathOf(section).c_str(), 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS)
        return false;
    opened_.Reset(key);
    openedSection_ = section;
    return true;
}

std::wstring Win32Settings::Read(const std::wstring& section, const std::wstring& key,
                                 const std::wstring& absent) {
    std::wstring value(256, L'\0');
    for (;;) {
        if (!OpenForReading(section)) return absent;
        auto size = static_cast<DWORD>(value.size() * sizeof(wchar_t));
        const LSTATUS status =
            RegGetValueW(opened_.Get(), nullptr, key.c_str(), RRF_RT_REG_SZ, nullptr, value.data(), &size);
        if (status == ERROR_SUCCESS) return value.substr(0, value.find(L'\0'));
        if (status == ERROR_MORE_DATA)
            value.resize(std::max<std::size_t>(value.size() + 1, size / sizeof(wchar_t) + 1));
        else if (status == ERROR_KEY_DELETED)
            opened_.Reset();
        else
            return absent;
    }
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
    HKEY opened = nullptr;
    const LSTATUS found = RegOpenKeyExW(HKEY_CURRENT_USER, PathOf(section).c_str(), 0,
                                        KEY_SET_VALUE | KEY_QUERY_VALUE, &opened);
    if (found != ERROR_SUCCESS) return found == ERROR_FILE_NOT_FOUND;
    const UniqueRegistryKey registryKey(opened);
    const LSTATUS status = RegDeleteValueW(opened, key.c_str());
    if (status == ERROR_SUCCESS) RegFlushKey(opened);
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

std::wstring Win32Settings::LogonCommand() {
    wchar_t command[1024] = L"";
    DWORD size = sizeof command;
    const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, kRunAtLogon, ApplicationName().c_str(),
                                        RRF_RT_REG_SZ, nullptr, command, &size);
    return status == ERROR_SUCCESS ? command : L"";
}

bool Win32Settings::SetLogonCommand(const std::wstring& command) {
    const std::wstring name = ApplicationName();
    if (command.empty()) {
        const LSTATUS status = RegDeleteKeyValueW(HKEY_CURRENT_USER, kRunAtLogon, name.c_str());
        return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
    }
    const auto size = static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CURRENT_USER, kRunAtLogon, name.c_str(), REG_SZ, command.c_str(), size) ==
           ERROR_SUCCESS;
}
