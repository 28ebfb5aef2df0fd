#include "fake/Ledger.h"

namespace {

const char* KindName(ResourceKind kind) {
    constexpr const char* kNames[] = {"memory block", "metafile", "enhanced metafile", "GDI object", "file"};
    return kNames[static_cast<int>(kind)];
}

}  // namespace

std::string Ledger::Name(Number number, const Entry& entry) {
    return std::string(KindName(entry.kind)) + " " + std::to_string(number);
}

Ledger::Entry* Ledger::Find(Number number) {
    const auto found = entries_.find(number);
    return found == entries_.end() ? nullptr : &found->second;
}

Ledger::Number Ledger::Take(ResourceKind kind) {
    last_ += 4;
    entries_[last_] = Entry{kind};
    return last_;
}

bool Ledger::Knows(ResourceKind kind, Number number) const {
    const auto found = entries_.find(number);
    return found != entries_.end() && found->second.kind == kind;
}

void Ledger::Use(Number number, const char* operation) {
    const Entry* entry = Find(number);
    if (entry == nullptr) return;
    if (entry->state == State::Freed)
        Complain(Name(number, *entry) + ": " + operation + " after it was freed");
    if (entry->state == State::OfClipboard && !entry->lent)
        Complain(Name(number, *entry) + ": " + operation + " although the clipboard owns it");
}

void Ledger::Lock(Number number) {
    if (Entry* entry = Find(number)) ++entry->locks;
}

void Ledger::Unlock(Number number) {
    Entry* entry = Find(number);
    if (entry == nullptr) return;
    if (entry->locks == 0) {
        Complain(Name(number, *entry) + ": unlocked without a lock");
        return;
    }
    --entry->locks;
}

bool Ledger::Free(ResourceKind kind, Number number) {
    Entry* entry = Find(number);
    if (entry == nullptr || entry->kind != kind) {
        Complain(std::string("freed what is no ") + KindName(kind) + ": " + std::to_string(number));
        return false;
    }
    if (entry->state == State::Freed) {
        Complain(Name(number, *entry) + ": freed twice");
        return false;
    }
    if (entry->state == State::OfClipboard) {
        Complain(Name(number, *entry) + ": freed although the clipboard owns it");
        return false;
    }
    if (entry->locks > 0) Complain(Name(number, *entry) + ": freed while it is locked");
    entry->locks = 0;
    entry->state = State::Freed;
    return true;
}

void Ledger::HandOver(Number number) {
    Entry* entry = Find(number);
    if (entry == nullptr) return;
    if (entry->state != State::Owned)
        Complain(Name(number, *entry) + ": handed over although the program does not own it");
    entry->state = State::OfClipboard;
}

void Ledger::Lend(Number number) {
    if (Entry* entry = Find(number)) entry->lent = true;
}

void Ledger::EndLoans() {
    for (auto& [number, entry] : entries_) {
        if (entry.state != State::OfClipboard) continue;
        entry.lent = false;
        if (entry.locks > 0) Complain(Name(number, entry) + ": still locked when the clipboard was closed");
    }
}

void Ledger::FreeBySystem(Number number) {
    Entry* entry = Find(number);
    if (entry == nullptr) return;
    if (entry->locks > 0) Complain(Name(number, *entry) + ": still locked when the clipboard was emptied");
    entry->locks = 0;
    entry->state = State::Freed;
}

std::vector<std::string> Ledger::Problems() const {
    std::vector<std::string> problems = complaints_;
    for (const auto& [number, entry] : entries_) {
        if (entry.state == State::Owned)
            problems.push_back(Name(number, entry) +
                               (entry.kind == ResourceKind::File ? ": left open" : ": never freed"));
        if (entry.locks > 0) problems.push_back(Name(number, entry) + ": left locked");
    }
    if (clipboardOpen_) problems.push_back("the clipboard: left open");
    return problems;
}

int Ledger::Owned(ResourceKind kind) const {
    int owned = 0;
    for (const auto& [number, entry] : entries_)
        if (entry.kind == kind && entry.state == State::Owned) ++owned;
    return owned;
}
