#pragma once

#include <string_view>

// The program's pictures: icons in the resources, drawn in src/resources/pictures/ and named in Pictures.rc.
// Each holds the sizes 16, 20, 24, 32, 40, 48, 64 and 256; whoever shows one loads it by name at the size
// that the window's DPI asks for.

// A picture's key, as trees, lists and the tool bar know it, and the name of its icon resource.
struct Picture {
    std::wstring_view key;
    const wchar_t* resource;
};

// The first icon resource in the order of names is the one that the file manager shows for the program: it
// must stay the application's.
inline constexpr Picture kApplicationPicture{L"Application", L"PIC_APPLICATION"};
// The notification area's, in the order of CaptureState.
inline constexpr Picture kTrayPictures[] = {
    {L"Tray", L"PIC_TRAY"},
    {L"TrayOff", L"PIC_TRAYOFF"},
    {L"TrayLocked", L"PIC_TRAYLOCKED"},
    {L"TrayWaiting", L"PIC_TRAYWAITING"},
};

// What stands beside a node of the tree: its kind, or the active container's mark.
inline constexpr Picture kTreePictures[] = {
    {L"Profile", L"PIC_PROFILE"}, {L"Structure", L"PIC_STRUCTURE"}, {L"Waiting", L"PIC_WAITING"},
    {L"Clip", L"PIC_CLIP"},       {L"Camera", L"PIC_CAMERA"},
};

// What stands beside a format of a clip: the group of its description.
inline constexpr Picture kFormatPictures[] = {
    {L"Help", L"PIC_HELP"}, {L"Paint", L"PIC_PAINT"}, {L"Text", L"PIC_TEXT"},
    {L"OLE", L"PIC_OLE"},   {L"Clip", L"PIC_CLIP"},
};

// The keys of the tool bar, in its order.
inline constexpr Picture kToolbarPictures[] = {
    {L"Profil", L"PIC_PROFIL"},
    {L"Import", L"PIC_IMPORT"},
    {L"Copy", L"PIC_COPY"},
    {L"Delete", L"PIC_DELETE"},
    {L"Properties", L"PIC_PROPERTIES"},
    {L"ViewLarge", L"PIC_VIEWLARGE"},
    {L"ViewSmall", L"PIC_VIEWSMALL"},
    {L"ViewList", L"PIC_VIEWLIST"},
    {L"ViewDetails", L"PIC_VIEWDETAILS"},
    {L"ViewPreview", L"PIC_VIEWPREVIEW"},
    {L"ViewProperties", L"PIC_VIEWPROPERTIES"},
    {L"Lock", L"PIC_LOCK"},
    {L"Snap", L"PIC_SNAP"},
    {L"AutoDetect", L"PIC_AUTODETECT"},
};
