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

    std::size_t BitsSize(std::int32_t metafile) override;
    bool GetBits(std::int32_t metafile, void* buffer, std::size_t size) override;
    std::int32_t Create(const void* bits, std::size_t size) override;
    void Delete(std::int32_t metafile) override;

    std::size_t EnhancedBitsSize(DataHandle metafile) override;
    bool GetEnhancedBits(DataHandle metafile, void* buffer, std::size_t size) override;
    DataHandle CreateEnhanced(const void* bits, std::size_t size) override;
    void DeleteEnhanced(DataHandle metafile) override;

    // Metafiles owned by the clipboard, whatever their bits are.
    std::int32_t MakeForClipboard(std::string_view bits);
    DataHandle MakeEnhancedForClipboard(std::string_view bits);
    // The bits, whoever owns the metafile; empty when there is none.
    std::string Bits(std::int32_t metafile) const;
    std::string EnhancedBits(DataHandle metafile) const;
    // The clipboard frees a metafile of its own.
    void FreeBySystem(std::int32_t metafile);
    void FreeEnhancedBySystem(DataHandle metafile);

 private:
    using Number = Ledger::Number;
    Number Make(ResourceKind kind, std::string_view bits);
    const std::string* Find(ResourceKind kind, Number number) const;
    std::size_t SizeOf(ResourceKind kind, Number number, Operation operation);
    bool Get(ResourceKind kind, Number number, void* buffer, std::size_t size, Operation operation);
    void Free(ResourceKind kind, Number number);

    Ledger& ledger_;
    Failures& failures_;
    std::map<Number, std::string> bits_;
};

// The smallest bits that count as a metafile's, with `content` as the rest of it.
std::string MetafileBitsWith(std::string_view content);
std::string EnhancedMetafileBitsWith(std::string_view content);
