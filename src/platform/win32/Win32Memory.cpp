#include "platform/win32/Win32Memory.h"

#include "platform/win32/SystemHandles.h"

DataHandle Win32Memory::Allocate(std::size_t size) {
    return EngineData(GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE | GMEM_ZEROINIT, size));
}

void* Win32Memory::Lock(DataHandle block) {
    // The system takes a GDI object's handle for a fixed block's address and may lock it; only blocks have a
    // size. One of no bytes cannot be locked anyway.
    if (Size(block) == 0) return nullptr;
    return GlobalLock(SystemData(block));
}

void Win32Memory::Unlock(DataHandle block) {
    GlobalUnlock(SystemData(block));
}

std::size_t Win32Memory::Size(DataHandle block) {
    return block == DataHandle::None ? 0 : GlobalSize(SystemData(block));
}

void Win32Memory::Free(DataHandle block) {
    if (block != DataHandle::None) GlobalFree(SystemData(block));
}
