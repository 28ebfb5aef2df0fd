#include "windows/controls/Ole.h"

// OLE needs <windows.h> in front of it.
#include <windows.h>

#include <ole2.h>

namespace {

bool runs = false;

}  // namespace

OleScope::~OleScope() {
    if (runs) OleUninitialize();
    runs = false;
}

bool NeedOle() {
    if (!runs) runs = SUCCEEDED(OleInitialize(nullptr));
    return runs;
}
