#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/clipboard/CFormat.h"

// The formats of one clip, in the order in which the clipboard enumerated them.
class CFormats {
    struct Entry {
        std::wstring key;
        std::unique_ptr<CFormat> format;
    };

 public:
    // Goes through the formats in insertion order.
    class Enumerator {
     public:
        explicit Enumerator(std::vector<Entry>::const_iterator place) : place_(place) {}
        CFormat& operator*() const { return *place_->format; }
        CFormat* operator->() const { return place_->format.get(); }
        Enumerator& operator++() {
            ++place_;
            return *this;
        }
        friend bool operator==(const Enumerator&, const Enumerator&) = default;

     private:
        std::vector<Entry>::const_iterator place_;
    };

    CFormats() = default;
    CFormats(const CFormats&) = delete;
    CFormats& operator=(const CFormats&) = delete;

    // Appends a format, under a key unless that is empty. Throws RuntimeError (DuplicateKey) for a key that
    // is taken.
    CFormat& Add(std::unique_ptr<CFormat> item, const std::wstring& key = {});
    // By position from 1 to Count(), or by key. Throws RuntimeError (IndexOutOfRange, InvalidArgument) when
    // there is none. The reference is good until the format is removed.
    CFormat& Item(std::int32_t index) const;
    CFormat& Item(const std::wstring& key) const;
    std::int32_t Count() const { return static_cast<std::int32_t>(entries_.size()); }
    void Remove(std::int32_t index);
    void Remove(const std::wstring& key);

    Enumerator NewEnum() const { return begin(); }
    Enumerator begin() const { return Enumerator(entries_.begin()); }
    Enumerator end() const { return Enumerator(entries_.end()); }

    // The format that answers a request for `id`, or null. Matched by the name that the number has now, never
    // by the number itself: a registered format of an earlier run is found that way. Each step is traced
    // while RequestTrace is on.
    CFormat* SearchFormatIdByName(FormatNumber id) const;

 private:
    std::size_t Position(std::int32_t index) const;
    std::size_t Position(const std::wstring& key) const;
    CFormat* FindByName(const std::wstring& name) const;

    std::vector<Entry> entries_;
};
