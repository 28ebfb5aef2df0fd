#pragma once

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "desktop/Utf8.h"

// Whole files as bytes. Both throw std::runtime_error with the file's name.

inline std::string ReadWholeFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + Utf8(path.wstring()));
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void WriteWholeFile(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + Utf8(path.wstring()));
}
