// Makes a profile template from its readable text: vorlagen SOURCE.txt TEMPLATE.nxp

#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "TemplateText.h"

namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot be read");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Convert(const std::string& source, const std::string& target) {
    const std::vector<std::uint8_t> image = TemplateFromText(ReadFile(source));
    std::ofstream file(target, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
    if (!file.flush()) throw std::runtime_error(target + " cannot be written");
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: vorlagen SOURCE.txt TEMPLATE.nxp\n");
        return 2;
    }
    try {
        Convert(arguments[1], arguments[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", arguments[1], error.what());
        std::remove(arguments[2]);
        return 1;
    }
    return 0;
}
