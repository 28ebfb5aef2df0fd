#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

// The bytes of the example in docs/formats/<document>: rows of four digits of offset, two blanks, the bytes
// and, after two blanks, their characters.
inline std::string DocumentedBytes(const std::string& document) {
    std::ifstream file(std::filesystem::path(__FILE__).parent_path() / "../../docs/formats" / document);
    EXPECT_TRUE(file) << document;
    std::string bytes;
    bool inExample = false;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("```")) {
            inExample = !inExample;
        } else if (inExample) {
            std::istringstream row(line.substr(6, line.find("  ", 6) - 6));
            for (int byte; row >> std::hex >> byte;)
                bytes += static_cast<char>(byte);
        }
    }
    return bytes;
}
