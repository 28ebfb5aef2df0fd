#pragma once

#include <string>

#include "platform/SettingsStore.h"
#include "platform/win32/SystemHandles.h"

// The settings in the user's part of the registry; sections are keys under `root`, values are texts.
class Win32Settings : public SettingsPort {
 public:
    explicit Win32Settings(std::wstring root = L"Software\\NXClip") : root_(std::move(root)) {}

    std::wstring Read(const std::wstring& section, const std::wstring& key,
                      const std::wstring& absent) override;
    bool Write(const std::wstring& section, const std::wstring& key, const std::wstring& value) override;
    // Ends a change, and seldom happens: what was written before survives the loss of the current from here
    // on.
    bool DeleteValue(const std::wstring& section, const std::wstring& key) override;
    std::wstring LogonCommand() override;
    bool SetLogonCommand(const std::wstring& command) override;

 private:
    // By it the system's list of what to run tells one application from the other.
    std::wstring ApplicationName() const { return root_.substr(root_.rfind(L'\\') + 1); }
    std::wstring PathOf(const std::wstring& section) const { return root_ + L"\\" + section; }

    bool OpenForReading(const std::wstring& section);

    std::wstring root_;
    std::wstring openedSection_;
    UniqueRegistryKey opened_;
};
