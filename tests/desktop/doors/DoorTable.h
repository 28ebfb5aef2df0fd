#pragma once

#include <windows.h>

#include <string>

// The doors of the program, in a section of memory that the test looks into.
struct DoorState {
    char name[128];       // the function that the system calls: "frmMain::Procedure"
    volatile LONG armed;  // 1: its next pass throws, once
    volatile LONG thrown;
};

struct DoorTable {
    LONG count;
    DoorState doors[64];
    volatile LONG memoryFails;  // 1: the next memory asked for inside of a door is not there
};

inline std::wstring DoorTableName(DWORD processId) {
    return L"Local\\NXClip.Doors." + std::to_wstring(processId);
}
