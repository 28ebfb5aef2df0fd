#pragma once

#include <map>

// The calls of a port that a test makes fail by name, and all others that can fail. The fakes ask here, once
// per call, whether this one is to fail.
enum class Operation {
    ClipboardOpen,
    ClipboardEmpty,
    ClipboardData,
    ClipboardRegisterName,
    MemoryAllocate,
    FilesOpen,
    FilesRead,
    FilesWrite,
    FilesFlush,
    FilesCopy,
    FilesMakeDirectory,
    SettingsWrite,
    WindowsAddAtom,
    WindowsAddHotKey,
    Other,
};

// How a write that is made to fail leaves the file.
enum class WriteFailure {
    DiskFullWithPart,  // half of the bytes stand in the file, the call fails
    Nothing,           // the call fails and leaves no byte
    Short,             // half of the bytes stand in the file, and the call says so without failing
};

// How a read that is made to fail answers.
enum class ReadFailure {
    Error,
    Short,  // half of the bytes, as if the file had shrunk
};

// Makes one call fail, to be used in a loop: n = 1, 2, ... until a run ends without the failure having fired.
class Failures {
 public:
    // The n-th call of `operation` from now on fails; n = 1 is the next one. Replaces what was planned
    // before.
    void FailNth(Operation operation, int n) {
        planned_ = operation;
        Start(Plan::OneOfAKind, n);
    }
    // The n-th call from now on of whatever operation fails.
    void FailNthOfAny(int n) { Start(Plan::OneOfAny, n); }
    // Every call of `operation` from now on fails.
    void FailAlways(Operation operation) {
        planned_ = operation;
        Start(Plan::AllOfAKind, 0);
    }
    // The process is killed in the n-th call from now on: that one fails, all that follow fail too and leave
    // nothing behind.
    void KillInNthOfAny(int n) { Start(Plan::Kill, n); }
    // The n-th call from now on of whatever operation fails, and the m-th after it.
    void FailPairOfAny(int n, int m) { Start(Plan::OneOfAny, n, m); }
    // Nothing fails any more; whether the last plan has fired is still known.
    void FailNone();
    // True when a planned failure has happened since it was planned.
    bool Fired() const { return fired_; }
    // True while a planned failure is still to come.
    bool Waiting() const { return plan_ != Plan::None && callsLeft_ > 0; }
    // The calls of an operation so far, those that failed included.
    int Calls(Operation operation) const;

    WriteFailure writeFailure = WriteFailure::DiskFullWithPart;
    ReadFailure readFailure = ReadFailure::Error;

    // For the fakes: counts a call and says whether it fails.
    bool Strikes(Operation operation = Operation::Other);
    // For the fakes: what fails now leaves nothing behind, not even a part.
    bool IsDead() const { return dead_; }

 private:
    enum class Plan { None, OneOfAKind, OneOfAny, AllOfAKind, Kill };
    void Start(Plan plan, int n, int m = 0);

    Plan plan_ = Plan::None;
    Operation planned_ = Operation::ClipboardOpen;
    int callsLeft_ = 0;
    int callsToSecond_ = 0;
    bool dead_ = false;
    bool fired_ = false;
    std::map<Operation, int> calls_;
};
