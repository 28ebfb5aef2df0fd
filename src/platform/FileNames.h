#pragma once

#include <set>
#include <string>

// Names for files that are made of texts from anywhere.

// A name that Windows takes for a file, as near to `text` as can be: letters that no name may have become
// "_", it ends in no dot or blank, is no device's name and not too long to have something put behind it.
// Empty when nothing is left of the text.
std::wstring SafeFileName(const std::wstring& text);

// Hands out names that differ in more than their case, in one directory.
class UniqueNames {
 public:
    // The name itself, or with the first number behind it that is free: "Brief (2)". `isTaken` tells of those
    // that stand in the directory already.
    template <typename IsTaken>
    std::wstring Next(const std::wstring& name, const IsTaken& isTaken) {
        for (int number = 1;; ++number) {
            const std::wstring candidate = Numbered(name, number);
            if (Take(candidate, isTaken(candidate))) return candidate;
        }
    }

 private:
    static std::wstring Numbered(const std::wstring& name, int number);
    bool Take(const std::wstring& name, bool isTaken);

    std::set<std::wstring> given_;  // in upper case
};
