#pragma once

#include <cstdint>
#include <string>

#include "platform/Handles.h"

// The system-wide combination ALT + CTRL + letter that brings the program to the front; the letter is the
// option KeyActivate.

// Registers the combination for `window`, anew if it was registered before. False when another program has
// it: it does nothing here then.
bool RegisterActivationHotKey(WindowHandle window);

// Says that another program has the combination, and which letter is free.
std::wstring TakenHotKeyText(const std::wstring& letter);

// Frees the combination and the atom that belongs to it. Without a registration nothing happens.
void UnregisterActivationHotKey(WindowHandle window);

// The identifier registered now, as it comes back in the hot key's message; 0 while there is none.
std::int32_t ActivationHotKeyIdentifier();

// What the user should know before he chooses this letter: another program has the combination, or on his
// keyboard ALT + CTRL, which is AltGr, and the letter write a character, and no program gets that any more.
// Empty when there is nothing to say.
std::wstring HotKeyHint(const std::wstring& letter);
