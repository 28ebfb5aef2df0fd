#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "fake/Failures.h"
#include "fake/Ledger.h"
#include "platform/Metafiles.h"

// Metafiles that are nothing but their bits.
class FakeMetafiles : public MetafilePort {
 public:
    FakeMetafiles(Ledger& ledger, Failures& failures) : ledger_(ledger), failures_(failures) {}

    std::size_t PictureBlockSize() const override { return 16; }
    MetafilePicture ReadPicture(const void* block) const override;
    void WritePicture(const MetafilePicture& picture, void* block) const override;

    std::size_t BitsSize(std::int32_t metafile) override {
        return SizeOf(ResourceKind::Metafile, NumberOf(metafile));
    }
    bool GetBits(std::int32_t metafile, void* buffer, std::size_t size) override {
        return Get(ResourceKind::Metafile, NumberOf(metafile), buffer, size);
    }
    std::int32_t Create(const void* bits, std::size_t size) override;
    void Delete(std::int32_t metafile) override { Free(ResourceKind::Metafile, NumberOf(metafile)); }

    std::size_t EnhancedBitsSize(DataHandle metafile) override {
        return SizeOf(ResourceKind::EnhancedMetafile, NumberOf(metafile));
    }
    bool GetEnhancedBits(DataHandle metafile, void* buffer, std::size_t size) override {
        return Get(ResourceKind::EnhancedMetafile, NumberOf(metafile), buffer, size);
    }
    DataHandle CreateEnhanced(const void* bits, std::size_t size) override;
    void DeleteEnhanced(DataHandle metafile) override {
        Free(ResourceKind::EnhancedMetafile, NumberOf(metafile));
    }

    // Metafiles owned by the clipboard, whatever their bits are.
    std::int32_t MakeForClipboard(std::string_view bits) {
        return static_cast<std::int32_t>(MakeForClipboard(ResourceKind::Metafile, bits));
    }
    DataHandle MakeEnhancedForClipboard(std::string_view bits) {
        return static_cast<DataHandle>(MakeForClipboard(ResourceKind::EnhancedMetafile, bits));
    }
    // The bits of either kind, whoever owns the metafile; empty when there is none.
    template <typename Handle>
    std::string Bits(Handle metafile) const {
        const auto found = bits_.find(NumberOf(metafile));
        return found == bits_.end() ? std::string() : found->second;
    }
    // The clipboard frees a metafile of its own, of either kind.
    template <typename Handle>
    void FreeBySystem(Handle metafile) {
        if (bits_.erase(NumberOf(metafile)) > 0) ledger_.FreeBySystem(NumberOf(metafile));
    }

 private:
    using Number = Ledger::Number;
    static Number NumberOf(std::int32_t metafile) {
        return static_cast<Number>(static_cast<std::uint32_t>(metafile));
    }
    static Number NumberOf(DataHandle metafile) { return static_cast<Number>(metafile); }
    Number Make(ResourceKind kind, std::string_view bits);
    Number MakeForClipboard(ResourceKind kind, std::string_view bits);
    const std::string* Find(ResourceKind kind, Number number) const;
    std::size_t SizeOf(ResourceKind kind, Number number);
    bool Get(ResourceKind kind, Number number, void* buffer, std::size_t size);
    void Free(ResourceKind kind, Number number);

    Ledger& ledger_;
    Failures& failures_;
    std::map<Number, std::string> bits_;
};

// The smallest bits that count as a metafile's, with `content` as the rest of it.
std::string MetafileBitsWith(std::string_view content);
std::string EnhancedMetafileBitsWith(std::string_view content);
