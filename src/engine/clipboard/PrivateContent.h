#pragma once

class CFormats;

// True when the program that filled the clipboard marks its content as not to be recorded, as password safes
// do. `formats` are those of the clipboard, which must be open: one of the marks is a value.
bool IsPrivateContent(const CFormats& formats);
