#pragma once

#include <map>
#include <optional>
#include <string>

#include "engine/process/OptionValues.h"
#include "resources/controls.h"

// The rules of the options dialog. The form only moves texts and check marks between its controls and these.

// The check boxes of the kept formats are chkSaveUnknown + 1 to + kFormatBoxes; behind them stands "Alles
// sichern".
inline constexpr int kFormatBoxes = 5;
inline constexpr int kSaveAllBox = chkSaveUnknown + kFormatBoxes + 1;

// The contents of the dialog's controls, by their numbers (resources/controls.h).
struct OptionControls {
    std::map<int, bool> marks;          // check boxes and option buttons
    std::map<int, std::wstring> texts;  // text boxes
    bool formatBoxesEnabled = true;     // not kSaveAllBox
};

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

// The text of a text box after the user has left it; `stored` are the options in force.
std::wstring TextAfterLeave(int textBox, const std::wstring& text, const OptionValues& stored);

// tbKeyActivate: every key press is swallowed; a letter from A to Z becomes the whole text.
std::optional<std::wstring> KeyActivateAfterPress(wchar_t key);
// `stored` is the option in force: it comes back when the field would be left without a letter.
std::wstring KeyActivateAfterRelease(const std::wstring& text, const std::wstring& stored);
