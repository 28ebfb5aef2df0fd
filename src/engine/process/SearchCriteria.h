#pragma once

#include <cstdint>
#include <string>

// What the search looks for. Lives for the whole run and is never stored; these are its values at the start.
struct SearchCriteria {
    std::wstring searchText;
    std::int16_t kinds = 7;   // 1 profiles, 2 folders, 4 clips
    std::int16_t fields = 1;  // 1 names, 2 info texts, 4 contents
    // True: the field begins with the search text, without regard to case. False: the search text occurs in
    // it exactly.
    bool prefixMode = true;
    bool downward = true;

    friend bool operator==(const SearchCriteria&, const SearchCriteria&) = default;
};

// The one set of criteria of the process.
SearchCriteria& TheSearchCriteria();
