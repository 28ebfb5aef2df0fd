#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <variant>

#include "engine/process/OptionValues.h"

// One option, one row: the settings store and the options dialog both go by it. What an option is reset to
// stands with its member in OptionValues.
struct OptionRow {
    using Member = std::variant<bool OptionValues::*, std::int16_t OptionValues::*,
                                std::int32_t OptionValues::*, std::wstring OptionValues::*>;

    // The name in the store; null for an option that is not stored.
    const wchar_t* key;
    // The value when the store does not have the option.
    const wchar_t* whenAbsent;
    Member member;
    // The check box or text box of the dialog that shows it; 0 when the dialog has a rule of its own for it.
    int control = 0;
    // The name for writing, where it is spelled differently.
    const wchar_t* writeKey = nullptr;
};

// In the order in which the store is read and written.
std::span<const OptionRow> OptionRows();

bool IsFlag(const OptionRow& row);

// The option's value as the store and the text boxes have it: a flag as "1" or "0", a number in decimal.
std::wstring OptionText(const OptionRow& row, const OptionValues& values);
// Takes such a text over; any text but "1" is a flag that is off. False, with nothing changed, for a text
// that is no number of the option's size.
bool SetOption(const OptionRow& row, OptionValues& values, const std::wstring& text);
