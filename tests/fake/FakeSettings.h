#pragma once

#include <map>
#include <optional>
#include <string>

#include "fake/Failures.h"
#include "platform/SettingsStore.h"

// Settings in memory.
class FakeSettings : public SettingsPort {
 public:
    explicit FakeSettings(Failures& failures) : failures_(failures) {}

    std::wstring Read(const std::wstring& section, const std::wstring& key,
                      const std::wstring& absent) override;
    bool Write(const std::wstring& section, const std::wstring& key, const std::wstring& value) override;
    bool DeleteValue(const std::wstring& section, const std::wstring& key) override;
    std::wstring LogonCommand() override { return logonCommand_; }
    bool SetLogonCommand(const std::wstring& command) override;

    // What stands there, none when the key is absent. No call of the port.
    std::optional<std::wstring> Value(const std::wstring& section, const std::wstring& key) const;
    void Set(const std::wstring& section, const std::wstring& key, const std::wstring& value);
    // The number of keys in a section.
    std::size_t KeyCount(const std::wstring& section) const;

 private:
    using Section = std::map<std::wstring, std::wstring>;

    Failures& failures_;
    std::wstring logonCommand_;
    std::map<std::wstring, Section> sections_;  // sections and keys in upper case
};
