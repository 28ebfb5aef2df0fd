#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "engine/process/modOption.h"

// The rules of the options dialog. The form only moves texts and check marks between its controls and these.

enum class CheckMark { Off, On, Grey };

// The controls of the dialog, under their names. The grey state counts as off.
struct OptionControls {
    CheckMark chkTopWindow{}, chkSound{}, chkSnapDialog{}, chkIconAfterSnap{}, chkTray{}, chkIcon{},
        chkTooltips{}, chkLock{}, chkSplash{}, chkAutoSnap{}, chkDblClick{}, chkIconAfterSet{}, chkSetBeep{};
    std::wstring tbSoundFile, tbInfo, tbTextLen, tbClipLen, tbUnknownFormatSet, tbKeyActivate;
    bool optFormatTitle = false;
    bool optTextTitle = false;
    std::array<bool, 2> OptFSet{};              // 0 "Ignorieren", 1 "Anlegen mit Namen"
    std::array<CheckMark, 7> chkSaveUnknown{};  // from 1; 6 is "Alles sichern"
    bool formatBoxesEnabled = true;             // chkSaveUnknown 1 to 5
};

// The value of a chkSaveUnknown box (1 to 6) in the mask UnknownFormats.
int UnknownFormatBit(int box);

OptionControls ControlsFromOptions(const OptionValues& values);

// "Alles sichern" was clicked and shows its new state: checked it checks and disables the other boxes,
// unchecked it enables them and leaves their marks.
void SaveAllClicked(OptionControls& controls);

// OK: the leave-field checks, then all controls into `values`. False when a number is too large to be kept;
// the user has been told then and `values` is as before.
bool ConfirmOptions(OptionControls& controls, OptionValues& values);

// Which characters get through to a text box; Backspace is character 8.
bool ClipLenKeyPasses(wchar_t key);
// Nothing at all gets through once the field holds three characters, Backspace included. This is deliberate:
// the user selects the text to replace it. `length` counts what stays when the selection is replaced.
bool TextLenKeyPasses(wchar_t key, std::size_t length);
bool UnknownFormatSetKeyPasses(wchar_t key);

// What a text box holds after it was left.
std::wstring ClipLenAfterLeave(const std::wstring& text);
std::wstring TextLenAfterLeave(const std::wstring& text);

// tbKeyActivate: every key press is swallowed; a letter from A to Z becomes the whole text.
std::optional<std::wstring> KeyActivateAfterPress(wchar_t key);
// `stored` is the option in force: it comes back when the field would be left without a letter.
std::wstring KeyActivateAfterRelease(const std::wstring& text, const std::wstring& stored);
std::wstring KeyActivateAfterLeave(const std::wstring& text, const std::wstring& stored);
