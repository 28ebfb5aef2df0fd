#pragma once

#include <cstdint>
#include <string>

#include "platform/Handles.h"

// The system-wide combination ALT + CTRL + letter that brings the program to the front; the letter is the
// option KeyActivate.

// Registers the combination for `window`, anew if it was registered before. That another program owns it is
// not reported: it simply does nothing then.
void RegisterActivationHotKey(WindowHandle window);

// Frees the combination and the atom that belongs to it. Without a registration nothing happens.
void UnregisterActivationHotKey(WindowHandle window);

// The identifier registered now, as it comes back in the hot key's message; 0 while there is none.
std::int32_t ActivationHotKeyIdentifier();

// What the user should know before he chooses this letter: on his keyboard ALT + CTRL, which is AltGr, and
// the letter write a character, and no program gets that any more. Empty when nothing is lost.
std::wstring HotKeyHint(const std::wstring& letter);
