#pragma once

#include <cstddef>

#include "platform/Handles.h"

// Moveable, shareable global memory blocks: the only kind that the clipboard takes.
class MemoryPort {
 public:
    virtual ~MemoryPort() = default;

    // A new block of `size` bytes, zeroed, owned by the caller; None when there is no memory.
    virtual DataHandle Allocate(std::size_t size) = 0;
    // The block's address until Unlock; null when `block` is none of ours to lock.
    virtual void* Lock(DataHandle block) = 0;
    virtual void Unlock(DataHandle block) = 0;
    // The block's size in bytes; 0 for a handle that is no memory block (a GDI object, for example).
    virtual std::size_t Size(DataHandle block) = 0;
    virtual void Free(DataHandle block) = 0;
};
