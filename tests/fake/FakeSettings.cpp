#include "fake/FakeSettings.h"

#include "platform/Text.h"

std::wstring FakeSettings::Read(const std::wstring& section, const std::wstring& key,
                                const std::wstring& absent) {
    return Value(section, key).value_or(absent);
}

bool FakeSettings::Write(const std::wstring& section, const std::wstring& key, const std::wstring& value) {
    if (failures_.Strikes(Operation::SettingsWrite)) return false;
    Set(section, key, value);
    return true;
}

bool FakeSettings::DeleteValue(const std::wstring& section, const std::wstring& key) {
    if (failures_.Strikes()) return false;
    const auto found = sections_.find(UpperCase(section));
    if (found != sections_.end()) found->second.erase(UpperCase(key));
    return true;
}

bool FakeSettings::SetLogonCommand(const std::wstring& command) {
    if (failures_.Strikes(Operation::SettingsWrite)) return false;
    logonCommand_ = command;
    return true;
}

std::optional<std::wstring> FakeSettings::Value(const std::wstring& section, const std::wstring& key) const {
    const auto foundSection = sections_.find(UpperCase(section));
    if (foundSection == sections_.end()) return std::nullopt;
    const auto found = foundSection->second.find(UpperCase(key));
    if (found == foundSection->second.end()) return std::nullopt;
    return found->second;
}

void FakeSettings::Set(const std::wstring& section, const std::wstring& key, const std::wstring& value) {
    sections_[UpperCase(section)][UpperCase(key)] = value.substr(0, value.find(L'\0'));
}

std::size_t FakeSettings::KeyCount(const std::wstring& section) const {
    const auto found = sections_.find(UpperCase(section));
    return found == sections_.end() ? 0 : found->second.size();
}
