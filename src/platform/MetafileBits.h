#pragma once

#include <cstddef>

// Whether bytes that nobody vouches for begin like a metafile's or an enhanced metafile's bits and hold as
// much as their header says. The system itself reads on behind bits whose header lies about their size.
bool AreMetafileBits(const void* bits, std::size_t size);
bool AreEnhancedMetafileBits(const void* bits, std::size_t size);
