#include "commandline/Arguments.h"

#include <algorithm>

Arguments::Arguments(const std::vector<std::wstring>& words, const std::vector<OptionRow>& options) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::wstring& word = words[i];
        if (word == L"--") {
            values_.insert(values_.end(), words.begin() + static_cast<std::ptrdiff_t>(i) + 1, words.end());
            return;
        }
        if (word.size() < 2 || word[0] != L'-') {
            values_.push_back(word);
            continue;
        }
        const std::size_t equals = word.starts_with(L"--") ? word.find(L'=') : std::wstring::npos;
        const std::wstring name = word.substr(0, equals);
        const auto row = std::find_if(options.begin(), options.end(), [&](const OptionRow& option) {
            return name == option.name || name == option.shortName;
        });
        if (row == options.end()) throw CommandError{L"Unbekannte Option: " + word};
        if (!row->takesValue) {
            if (equals != std::wstring::npos)
                throw CommandError{L"Die Option " + name + L" hat keinen Wert."};
            options_[row->name];
        } else if (equals != std::wstring::npos) {
            options_[row->name] = word.substr(equals + 1);
        } else if (++i < words.size()) {
            options_[row->name] = words[i];
        } else {
            throw CommandError{L"Hinter " + word + L" fehlt der Wert."};
        }
    }
}

std::wstring Arguments::Of(const wchar_t* option, const std::wstring& absent) const {
    const auto found = options_.find(option);
    return found == options_.end() ? absent : found->second;
}
