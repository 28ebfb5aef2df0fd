#pragma once

#include <cstddef>

#include "platform/Clipboard.h"
#include "platform/Handles.h"

// A global memory block of ours, locked as long as we hold it: freed at the end unless it was handed over.
class GlobalBlock {
 public:
    // Address() is null when there was no memory for the block.
    explicit GlobalBlock(std::size_t size);
    ~GlobalBlock();
    GlobalBlock(const GlobalBlock&) = delete;
    GlobalBlock& operator=(const GlobalBlock&) = delete;

    void* Address() const { return address_; }
    // Puts the block on the open clipboard, which owns it from then on. When the clipboard refuses it, the
    // result is false and the block stays ours.
    bool PutOnClipboard(FormatNumber format);

 private:
    void Unlock();

    DataHandle block_;
    void* address_ = nullptr;
};

// A block of somebody else, locked for reading while this lives.
class BlockLock {
 public:
    explicit BlockLock(DataHandle block);
    ~BlockLock();
    BlockLock(const BlockLock&) = delete;
    BlockLock& operator=(const BlockLock&) = delete;

    // Null when the block could not be locked.
    const void* Address() const { return address_; }

 private:
    DataHandle block_;
    const void* address_;
};
