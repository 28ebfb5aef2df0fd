#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

enum class ResourceKind { Block, Metafile, EnhancedMetafile, GdiObject, File };

// Who answers for each memory block, metafile, file and for the open clipboard. Every resource has a number
// that is never given again, so that a late use is told from a rightful one. What the program does wrong is
// noted and does not stop it; Problems lists it at the end.
class Ledger {
 public:
    using Number = std::uintptr_t;

    // A new resource, owned by the program.
    Number Take(ResourceKind kind);
    bool Knows(ResourceKind kind, Number number) const;
    // The program reads or writes a resource: it must own it, or have it lent by the open clipboard.
    void Use(Number number, const char* operation);
    void Lock(Number number);
    void Unlock(Number number);
    // The program frees what it owns, and nothing else. True when the resource existed until now.
    bool Free(ResourceKind kind, Number number);

    // The clipboard owns the resource from now on.
    void HandOver(Number number);
    // The clipboard lends a resource of its own until EndLoans.
    void Lend(Number number);
    // The clipboard is closed: nobody may use what belongs to it any more or keep it locked.
    void EndLoans();
    // The clipboard frees a resource of its own.
    void FreeBySystem(Number number);

    void ClipboardOpened() { clipboardOpen_ = true; }
    void ClipboardClosed() { clipboardOpen_ = false; }

    void Complain(const std::string& problem) { complaints_.push_back(problem); }
    // Everything that is out of order now: complaints, leaks, locks, open files, an open clipboard.
    std::vector<std::string> Problems() const;
    // Forgets the complaints made so far; for tests of the ledger itself.
    void ForgetComplaints() { complaints_.clear(); }
    // How many resources of a kind the program owns now.
    int Owned(ResourceKind kind) const;

 private:
    enum class State { Owned, OfClipboard, Freed };
    struct Entry {
        ResourceKind kind;
        State state = State::Owned;
        bool lent = false;
        int locks = 0;
    };
    Entry* Find(Number number);
    static std::string Name(Number number, const Entry& entry);

    std::map<Number, Entry> entries_;
    Number last_ = 0x10000;
    bool clipboardOpen_ = false;
    std::vector<std::string> complaints_;
};
