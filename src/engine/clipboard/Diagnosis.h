#pragma once

#include <string>

#include "engine/clipboard/CFormats.h"
#include "platform/Handles.h"

// How the diagnostics window puts windows, addresses and formats into words.

// The window's title and its handle in hexadecimal, "<unbekannt>" for an empty title; `missing` for no
// window.
std::wstring DescribeWindow(WindowHandle window, const std::wstring& missing);
std::wstring DescribeAddress(ProcedureAddress address);
// The format's name and decimal number.
std::wstring DescribeFormat(const CFormat& format);
