#pragma once

#include <string>

// The user's settings of this application: sections of keys, every value a text. Keys and sections are
// compared without regard to case.
class SettingsPort {
 public:
    virtual ~SettingsPort() = default;

    virtual std::wstring Read(const std::wstring& section, const std::wstring& key,
                              const std::wstring& absent) = 0;
    // A text ends at its first zero character.
    virtual bool Write(const std::wstring& section, const std::wstring& key, const std::wstring& value) = 0;
    // True as well when there is no such key.
    virtual bool DeleteValue(const std::wstring& section, const std::wstring& key) = 0;

    // The command line that the system runs for this application when the user logs on; empty for none.
    virtual std::wstring LogonCommand() = 0;
    virtual bool SetLogonCommand(const std::wstring& command) = 0;
};
