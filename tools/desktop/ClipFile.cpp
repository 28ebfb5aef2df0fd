#include "desktop/ClipFile.h"

#include <cstring>
#include <stdexcept>

#include "desktop/WholeFile.h"

namespace {

class Reader {
 public:
    explicit Reader(std::string bytes) : bytes_(std::move(bytes)) {}
    bool AtEnd() const { return at_ == bytes_.size(); }
    std::string Bytes(std::int64_t count) {
        if (count < 0 || static_cast<std::uint64_t>(count) > bytes_.size() - at_) {
            throw std::runtime_error("a clip file ends within a record");
        }
        at_ += static_cast<std::size_t>(count);
        return bytes_.substr(at_ - static_cast<std::size_t>(count), static_cast<std::size_t>(count));
    }
    template <class Integer>
    Integer Number() {
        Integer number;
        std::memcpy(&number, Bytes(sizeof number).data(), sizeof number);
        return number;
    }

 private:
    std::string bytes_;
    std::size_t at_ = 0;
};

}  // namespace

std::vector<ClipRecord> ReadClipFile(const std::filesystem::path& path) {
    Reader reader(ReadWholeFile(path));
    std::vector<ClipRecord> records;
    while (!reader.AtEnd()) {
        ClipRecord record;
        record.format = reader.Number<std::int32_t>();
        record.name = reader.Bytes(reader.Number<std::int16_t>());
        record.bytes = reader.Bytes(reader.Number<std::int32_t>());
        records.push_back(std::move(record));
    }
    return records;
}
