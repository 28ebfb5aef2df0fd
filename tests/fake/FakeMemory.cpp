#include "fake/FakeMemory.h"

#include <algorithm>

namespace {

Ledger::Number NumberOf(DataHandle block) {
    return static_cast<Ledger::Number>(block);
}

}  // namespace

FakeMemory::Block* FakeMemory::Find(DataHandle block) {
    const auto found = blocks_.find(block);
    return found == blocks_.end() ? nullptr : &found->second;
}

DataHandle FakeMemory::Allocate(std::size_t size) {
    if (failures_.Strikes(Operation::MemoryAllocate) || size > mostBytes) return DataHandle::None;
    return Make(std::string(size, '\0'));
}

void* FakeMemory::Lock(DataHandle block) {
    const bool fails = failures_.Strikes();
    ledger_.Use(NumberOf(block), "locked");
    Block* found = Find(block);
    if (found == nullptr || found->content->empty() || fails) return nullptr;
    ++found->locks;
    ledger_.Lock(NumberOf(block));
    return found->content->data();
}

void FakeMemory::Unlock(DataHandle block) {
    ledger_.Use(NumberOf(block), "unlocked");
    ledger_.Unlock(NumberOf(block));
    Block* found = Find(block);
    if (found == nullptr || found->locks == 0) return;
    if (--found->locks == 0) found->content = std::make_unique<Content>(*found->content);
}

std::size_t FakeMemory::Size(DataHandle block) {
    ledger_.Use(NumberOf(block), "asked for its size");
    const Block* found = Find(block);
    return found == nullptr ? 0 : found->content->size();
}

void FakeMemory::Free(DataHandle block) {
    if (block == DataHandle::None) return;
    if (ledger_.Free(ResourceKind::Block, NumberOf(block))) blocks_.erase(block);
}

DataHandle FakeMemory::Make(std::string_view bytes) {
    const auto block = static_cast<DataHandle>(ledger_.Take(ResourceKind::Block));
    blocks_[block].content = std::make_unique<Content>(bytes.begin(), bytes.end());
    return block;
}

DataHandle FakeMemory::MakeForClipboard(std::string_view bytes) {
    const DataHandle block = Make(bytes);
    ledger_.HandOver(NumberOf(block));
    return block;
}

std::string FakeMemory::Bytes(DataHandle block) const {
    const auto found = blocks_.find(block);
    if (found == blocks_.end()) return {};
    const Content& content = *found->second.content;
    return std::string(content.begin(), content.end());
}

void FakeMemory::Terminate(DataHandle block, std::size_t size) {
    if (const Block* found = Find(block)) {
        Content& content = *found->content;
        std::fill(content.end() - static_cast<std::ptrdiff_t>(std::min(size, content.size())), content.end(),
                  std::uint8_t{0});
    }
}

void FakeMemory::FreeBySystem(DataHandle block) {
    ledger_.FreeBySystem(NumberOf(block));
    blocks_.erase(block);
}
