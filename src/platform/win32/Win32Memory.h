#pragma once

#include "platform/Memory.h"

class Win32Memory : public MemoryPort {
 public:
    DataHandle Allocate(std::size_t size) override;
    void* Lock(DataHandle block) override;
    void Unlock(DataHandle block) override;
    std::size_t Size(DataHandle block) override;
    void Free(DataHandle block) override;
};
