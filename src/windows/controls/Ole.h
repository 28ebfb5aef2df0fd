#pragma once

// OLE, which the drag and the system's picture decoders need: from its first use, since it makes windows,
// pipes and a thread, to the end of its scope in WinMain.
class OleScope {
 public:
    OleScope() = default;
    ~OleScope();
    OleScope(const OleScope&) = delete;
    OleScope& operator=(const OleScope&) = delete;
};

// Starts it unless it runs; false when the system refuses.
bool NeedOle();
