#pragma once

#include <filesystem>

// A fresh, empty directory that goes with this object.
class ScratchDirectory {
 public:
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    const std::filesystem::path& Path() const { return path_; }

 private:
    std::filesystem::path path_;
};

// Where this program's file lies.
std::filesystem::path OwnDirectory();
