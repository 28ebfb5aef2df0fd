#pragma once

#include <initializer_list>
#include <string>
#include <vector>

// One choice of a file chooser: which files are listed, and what the user reads.
struct CFilter {
    std::wstring Pattern;      // such as "*.bmp;*.dib"
    std::wstring Description;  // such as "Bitmap-Bilder (*.bmp;*.dib)"

    friend bool operator==(const CFilter&, const CFilter&) = default;
};

// The filters of a file chooser, in their order; positions count from 1.
class CFilters {
 public:
    CFilters() = default;
    CFilters(std::initializer_list<CFilter> filters) : filters_(filters) {}

    CFilter& Add(const std::wstring& pattern, const std::wstring& description);
    // Throw RuntimeError (IndexOutOfRange) when there is no such filter.
    const CFilter& Item(int position) const;
    void Remove(int position);
    int Count() const { return static_cast<int>(filters_.size()); }
    const std::vector<CFilter>& NewEnum() const { return filters_; }

    // Appends the picture filters of one of the three lists; any other number adds nothing.
    void AddPreset(int list);

 private:
    std::vector<CFilter> filters_;
};
