#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fake/Failures.h"
#include "fake/Ledger.h"
#include "platform/Memory.h"

// Memory blocks that move whenever their last lock goes, so that an address kept too long is caught.
class FakeMemory : public MemoryPort {
 public:
    FakeMemory(Ledger& ledger, Failures& failures) : ledger_(ledger), failures_(failures) {}

    DataHandle Allocate(std::size_t size) override;
    void* Lock(DataHandle block) override;
    void Unlock(DataHandle block) override;
    std::size_t Size(DataHandle block) override;
    void Free(DataHandle block) override;

    // A block is not made when it is larger than this.
    std::size_t mostBytes = std::size_t{1} << 30;

    // A new block with this content, owned by the program as if it had allocated it.
    DataHandle Make(std::string_view bytes);
    // The same, but owned by the clipboard.
    DataHandle MakeForClipboard(std::string_view bytes);
    // A block's content, whoever owns it; empty when there is none.
    std::string Bytes(DataHandle block) const;
    // The clipboard ends a text that it takes over: the last `size` bytes become zero.
    void Terminate(DataHandle block, std::size_t size);
    // The clipboard frees a block of its own.
    void FreeBySystem(DataHandle block);

 private:
    using Content = std::vector<std::uint8_t>;
    struct Block {
        std::unique_ptr<Content> content;
        int locks = 0;
    };
    Block* Find(DataHandle block);

    Ledger& ledger_;
    Failures& failures_;
    std::map<DataHandle, Block> blocks_;
};
