#include "engine/clipboard/GlobalBlock.h"

#include "platform/Platform.h"

GlobalBlock::GlobalBlock(std::size_t size) : block_(ThePlatform().memory.Allocate(size)) {
    if (block_ != DataHandle::None) address_ = ThePlatform().memory.Lock(block_);
}

GlobalBlock::~GlobalBlock() {
    Unlock();
    if (block_ != DataHandle::None) ThePlatform().memory.Free(block_);
}

bool GlobalBlock::PutOnClipboard(FormatNumber format) {
    if (block_ == DataHandle::None) return false;
    Unlock();
    if (!ThePlatform().clipboard.Put(format, block_)) return false;
    block_ = DataHandle::None;  // the clipboard's from here on
    return true;
}

void GlobalBlock::Unlock() {
    if (address_ != nullptr) ThePlatform().memory.Unlock(block_);
    address_ = nullptr;
}

BlockLock::BlockLock(DataHandle block) : block_(block), address_(ThePlatform().memory.Lock(block)) {}

BlockLock::~BlockLock() {
    if (address_ != nullptr) ThePlatform().memory.Unlock(block_);
}
