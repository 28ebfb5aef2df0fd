#pragma once

#include <filesystem>
#include <string>
#include <vector>

// What the program's own check finds in profiles, whether the program has them open or not.
struct LeftProfiles {
    // What the end of the program must never leave, however it came, each as a line.
    std::vector<std::string> losses;
    // How many saves were broken off; the next start mends that.
    int brokenSaves = 0;
};

// Of the profiles that lie in `directory` or somewhere below it.
LeftProfiles ProfilesLeftBelow(const std::filesystem::path& directory);
