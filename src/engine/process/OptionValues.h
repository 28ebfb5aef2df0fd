#pragma once

#include <cstdint>
#include <string>

// The user's options. Each has two defaults, which differ on purpose: the reset value holds before the store
// is read and for every key that a failed load did not reach, the other one takes the place of a missing key
// and stands in the option's row (OptionTable.cpp).
struct OptionValues {
    bool TopWindow = false;          // the main window stays above other windows
    bool SnapSound = false;          // play a sound after a capture
    std::wstring SoundFile;          // the wave file played then
    bool EditPropAfterSnap = false;  // open the new clip's properties after a capture
    bool IconAfterSnap = false;      // minimise after a capture
    bool ShowInTray = true;          // show the icon in the notification area
    bool StartAsIcon = false;        // start minimised
    bool ShowTooltips = true;
    bool LockEdit = false;   // lock the structure actions on the tree
    bool ShowSplash = true;  // show the splash window at start-up
    bool AutoSnap = false;   // capture every change of the clipboard; never stored, off at every start
    std::wstring UserInfo;
    std::int16_t NewtextMode =
        0;  // a new clip's name: 1 = the first characters of its text, else its format set
    std::int16_t NewMaxLen = 20;  // the number of characters then
    bool NameByContent = false;   // a clip without text is named after what it holds then
    bool SetClipByDblClick = true;
    bool IconAfterSetClip = false;      // minimise after a clip was put on the clipboard
    bool SetBeep = false;               // beep after that
    std::int32_t MaxClipSize = 0;       // the largest format that is captured, in bytes; 0 = no limit
    std::int16_t ActionUnknownSet = 1;  // formats that match no set: 1 = capture as UnknownSet, else ignore
    std::int16_t UnknownFormats = 255;  // mask of the formats kept from such a capture
    std::wstring UnknownSet = L"Clip";
    std::wstring KeyActivate = L"C";  // the letter of the hot key
    bool SkipPrivate = true;          // automatic capture leaves what its program marks as confidential
    bool SkipSame = false;            // automatic capture leaves what the container's newest clip holds
    // The system starts the program when the user logs on; kept in the system's own list alone.
    bool StartWithWindows = false;
    bool AutoSnapAtStart = false;   // AutoSnap is on once the main window is loaded
    bool CloseToIcon = false;       // closing the window while captures go on leaves it as an icon
    bool HotKeyToList = false;      // the hot key leads to the newest clip of the active container
    bool KeepDeleted = false;       // what is deleted goes into a folder of its profile first
    std::int16_t DeletedDays = 30;  // what was deleted longer ago goes from there; 0 = never
    std::int32_t MostClips = 0;     // so many clips stay in a container after an automatic capture; 0 = all

    friend bool operator==(const OptionValues&, const OptionValues&) = default;
};
