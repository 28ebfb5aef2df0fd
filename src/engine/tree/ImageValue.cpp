#include "engine/tree/ImageValue.h"

#include <unordered_map>
#include <vector>

namespace {

// Every key that was ever met; their places never change.
struct Keys {
    std::unordered_map<std::wstring, std::int32_t> places;
    std::vector<const std::wstring*> inOrder;  // the map's own keys, which stay where they are
};

Keys& AllKeys() {
    static Keys keys;
    return keys;
}

}  // namespace

ImageValue::ImageValue(const std::wstring& key) : kind_(Kind::Key) {
    Keys& keys = AllKeys();
    const auto [place, added] = keys.places.try_emplace(key, static_cast<std::int32_t>(keys.inOrder.size()));
    if (added) keys.inOrder.push_back(&place->first);
    value_ = place->second;
}

const std::wstring& ImageValue::Key() const {
    static const std::wstring none;
    return kind_ == Kind::Key ? *AllKeys().inOrder[static_cast<std::size_t>(value_)] : none;
}
