#include "engine/clipboard/CFormats.h"

#include <algorithm>
#include <utility>

#include "engine/clipboard/FormatNames.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

CFormat& CFormats::Add(std::unique_ptr<CFormat> item, const std::wstring& key) {
    const auto sameKey = [&](const Entry& entry) { return entry.key == key; };
    if (!key.empty() && std::any_of(entries_.begin(), entries_.end(), sameKey)) {
        throw RuntimeError(ErrorNumber::DuplicateKey);
    }
    entries_.push_back({key, std::move(item)});
    return *entries_.back().format;
}

CFormat& CFormats::Item(std::int32_t index) const {
    return *entries_[Position(index)].format;
}

CFormat& CFormats::Item(const std::wstring& key) const {
    return *entries_[Position(key)].format;
}

void CFormats::Remove(std::int32_t index) {
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(Position(index)));
}

void CFormats::Remove(const std::wstring& key) {
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(Position(key)));
}

std::size_t CFormats::Position(std::int32_t index) const {
    if (index < 1 || index > Count()) throw RuntimeError(ErrorNumber::IndexOutOfRange);
    return static_cast<std::size_t>(index) - 1;
}

std::size_t CFormats::Position(const std::wstring& key) const {
    const auto entry = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& candidate) {
        return !candidate.key.empty() && candidate.key == key;
    });
    if (entry == entries_.end()) throw RuntimeError(ErrorNumber::InvalidArgument);
    return static_cast<std::size_t>(entry - entries_.begin());
}

CFormat* CFormats::SearchFormatIdByName(FormatNumber id) const {
    const std::wstring number = NumberText(id);
    std::wstring name = RegisteredFormatName(id);
    if (!name.empty()) {
        TraceRequest(number + L": " + name);
    } else {
        if (IsStandardFormat(id)) name = FormatNameOf(id);
        if (name.empty()) {
            TraceRequest(number + L": unbekanntes Format-ID");
            return nullptr;
        }
    }
    CFormat* const found = FindByName(name);
    TraceRequest(found != nullptr ? L"   " + name + L": Format vorhanden."
                                  : L"   " + number + L": Format nicht vorhanden.");
    return found;
}

CFormat* CFormats::FindByName(const std::wstring& name) const {
    const auto entry = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& candidate) {
        return candidate.format->FormatName == name;
    });
    return entry == entries_.end() ? nullptr : entry->format.get();
}
