#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <vector>

// What ends a command: one sentence for the error stream, and the exit code.
struct CommandError {
    std::wstring text;
    int exitCode = 2;
};

struct OptionRow {
    const wchar_t* name;       // "--to"
    const wchar_t* shortName;  // "-o"; empty for none
    bool takesValue;
};

// The words behind a command, as its table of options tells them apart. "--" ends the options.
class Arguments {
 public:
    // Throws CommandError for an option that the command does not have, and one without its value.
    Arguments(const std::vector<std::wstring>& words, const std::vector<OptionRow>& options);

    const std::vector<std::wstring>& Values() const { return values_; }
    bool Has(const wchar_t* option) const { return options_.contains(option); }
    // The option's value; `absent` without the option.
    std::wstring Of(const wchar_t* option, const std::wstring& absent = {}) const;

 private:
    std::vector<std::wstring> values_;
    std::map<std::wstring, std::wstring> options_;
};
