#pragma once

// What the test program and menuspy.dll say to each other. A menu can be read only inside of the program that
// made it, so the library goes there: a hook brings it in, the message asks, the answer lies in shared memory
// with a name that ends in the asked program's process number.

inline constexpr wchar_t kMenuSpyMessage[] = L"NXClip.MenuSpy.Ask";
inline constexpr wchar_t kMenuSpyMemory[] = L"NXClip.MenuSpy.";
inline constexpr char kMenuSpyProcedure[] = "MenuSpyProcedure";

struct MenuSpyEntry {
    int depth;   // 0 in the bar, or in the popped-up menu itself
    int number;  // -1 of an entry that opens a menu
    bool separator;
    bool enabled;
    bool checked;
    wchar_t text[100];
};

struct MenuSpyAnswer {
    bool answered;
    int count;
    MenuSpyEntry entries[200];
};
