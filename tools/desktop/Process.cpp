#include "desktop/Process.h"

#include <cstdio>
#include <mutex>
#include <set>

#include "desktop/Utf8.h"

namespace {

constexpr DWORD kEndBound = 5000;
constexpr UINT kEndedFromOutside = 99;

// The watching thread ends programs while the testing one may be making or ending its own.
std::mutex livingMutex;
std::set<Process*> living;

DWORD ExitCodeOf(HANDLE process) {
    DWORD code = 0;
    GetExitCodeProcess(process, &code);
    return code;
}

HANDLE MakeJob() {
    HANDLE job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

HANDLE OpenForOutput(const std::wstring& file) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                       CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

Process::Process(const std::wstring& commandLine, const std::wstring& directory,
                 const std::wstring& outputFile)
    : name_(Utf8(commandLine)) {
    job_ = MakeJob();
    std::wstring writable = commandLine;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION made{};
    const HANDLE output = outputFile.empty() ? nullptr : OpenForOutput(outputFile);
    if (output != nullptr) {
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = output;
        start.hStdError = output;
    }
    // It stands still until it belongs to the job, so that nothing it starts gets away.
    const BOOL started =
        CreateProcessW(nullptr, writable.data(), nullptr, nullptr, output != nullptr, CREATE_SUSPENDED,
                       nullptr, directory.empty() ? nullptr : directory.c_str(), &start, &made);
    const DWORD error = GetLastError();
    if (output != nullptr) CloseHandle(output);
    if (!started) {
        CloseHandle(job_);
        throw DriverError("cannot start " + name_ + ", error " + std::to_string(error));
    }
    AssignProcessToJobObject(job_, made.hProcess);
    process_ = made.hProcess;
    id_ = made.dwProcessId;
    ResumeThread(made.hThread);
    CloseHandle(made.hThread);
    const std::lock_guard lock(livingMutex);
    living.insert(this);
}

Process::~Process() {
    Terminate();
    {
        const std::lock_guard lock(livingMutex);
        living.erase(this);
    }
    CloseHandle(process_);
    CloseHandle(job_);
}

bool Process::Running() const {
    return WaitForSingleObject(process_, 0) == WAIT_TIMEOUT;
}

std::vector<Window> Process::Windows() const {
    std::vector<Window> windows = TopLevelWindows();
    std::erase_if(windows, [&](Window window) {
        HANDLE owner = OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, window.ProcessId());
        BOOL ours = FALSE;
        if (owner != nullptr) IsProcessInJob(owner, job_, &ours);
        if (owner != nullptr) CloseHandle(owner);
        return !ours;
    });
    return windows;
}

DWORD Process::WaitForEnd(std::chrono::milliseconds bound) {
    MayEnd();
    WaitFor(
        "the end of " + name_, [&] { return !Running(); }, bound);
    return ExitCodeOf(process_);
}

void Process::Terminate() {
    MayEnd();
    TerminateJobObject(job_, kEndedFromOutside);
    // A program that cannot even be ended must not hold up the rest.
    WaitForSingleObject(process_, kEndBound);
}

void Process::WaitUntilIdle() const {
    WaitForInputIdle(process_, static_cast<DWORD>(kBound.count()));
}

void Process::TerminateAll() {
    const std::lock_guard lock(livingMutex);
    for (Process* process : living)
        TerminateJobObject(process->job_, kEndedFromOutside);
}

bool WatchedProcessesRun(std::string& whatEnded) {
    const std::lock_guard lock(livingMutex);
    for (const Process* process : living) {
        if (process->mayEnd_ || process->Running()) continue;
        char code[16];
        std::snprintf(code, sizeof code, "%lX", ExitCodeOf(process->process_));
        whatEnded = process->name_ + " has ended with exit code " + code + " (hexadecimal)";
        return false;
    }
    return true;
}
