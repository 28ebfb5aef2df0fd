#include "windows/main/SearchWorker.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <new>

#include "platform/win32/SystemPath.h"
#include "platform/win32/Win32Files.h"

namespace {

constexpr ULONGLONG kLongestCall = 4000;  // milliseconds
// Between news, in milliseconds: the first ones come soon, then less often, since the list takes some time
// for each growth, however small.
constexpr ULONGLONG kFirstBetweenNews = 20;
constexpr ULONGLONG kMostBetweenNews = 160;

// Leaves others all their rights to a file while it is read, and waits for nobody.
class QuietFiles : public Win32Files {
 public:
    FileHandle Open(const std::wstring& path, FileUse) override {
        UniqueFile file(CreateFileW(SystemPath(path).c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
        return file.IsSet() ? EngineFile(file.Release()) : FileHandle::None;
    }
};

class LockScope {
 public:
    explicit LockScope(SRWLOCK& lock) : lock_(lock) { AcquireSRWLockExclusive(&lock_); }
    ~LockScope() { ReleaseSRWLockExclusive(&lock_); }
    LockScope(const LockScope&) = delete;
    LockScope& operator=(const LockScope&) = delete;

 private:
    SRWLOCK& lock_;
};

}  // namespace

// Shared by the thread and the window: whoever is last frees it.
struct SearchWorker::Job : SearchSink {
    HWND window = nullptr;
    UINT message = 0;
    std::shared_ptr<const SearchPlan> plan;
    std::atomic<bool> stopped = false;
    std::atomic<std::size_t> clip = 0;  // that is looked into
    std::atomic<ULONGLONG> lastAnswer = GetTickCount64();
    SRWLOCK lock = SRWLOCK_INIT;  // of what follows
    News news;
    bool told = false;
    ULONGLONG tellsAt = GetTickCount64() + kFirstBetweenNews;
    ULONGLONG betweenNews = kFirstBetweenNews;

    bool GoesOn(std::size_t next) override {
        clip = next;
        lastAnswer = GetTickCount64();
        if (stopped) return false;
        const LockScope locked(lock);
        news.read = next;
        TellWhenDue();
        return true;
    }
    void Found(std::size_t found, ContentHit hit) override {
        const LockScope locked(lock);
        news.hits.emplace_back(found, std::move(hit));
        TellWhenDue();
    }
    void Unreadable(std::size_t) override {
        const LockScope locked(lock);
        ++news.unreadable;
    }
    void Finish() {
        const LockScope locked(lock);
        news.read = plan->clips.size();
        news.finished = true;
        Tell();
    }
    void TellWhenDue() {
        if (lastAnswer < tellsAt) return;
        betweenNews = std::min(2 * betweenNews, kMostBetweenNews);
        tellsAt = lastAnswer + betweenNews;
        Tell();
    }
    // Once until it is taken.
    void Tell() {
        if (std::exchange(told, true) || stopped) return;
        PostMessageW(window, message, 0, 0);
    }
};

void SearchWorker::SetListener(HWND window, UINT message) {
    window_ = window;
    message_ = message;
}

bool SearchWorker::Start(std::shared_ptr<const SearchPlan> plan) {
    Stop();
    auto job = std::make_shared<Job>();
    job->window = window_;
    job->message = message_;
    job->plan = std::move(plan);
    auto forThread = std::make_unique<std::shared_ptr<Job>>(job);
    thread_.Reset(CreateThread(nullptr, 0, &SearchWorker::Run, forThread.get(), 0, nullptr));
    if (!thread_.IsSet()) return false;
    (void)forThread.release();  // the thread's now
    job_ = std::move(job);
    return true;
}

void SearchWorker::Stop() {
    if (job_ == nullptr) return;
    job_->stopped = true;
    // A call that waits for a drive comes back.
    CancelSynchronousIo(thread_.Get());
    thread_.Reset();
    job_ = nullptr;
}

SearchWorker::News SearchWorker::Take() {
    if (job_ == nullptr) return {};
    News news;
    {
        const LockScope locked(job_->lock);
        news = std::exchange(job_->news, News{});
        job_->news.read = news.read;
        job_->news.unreadable = news.unreadable;
        job_->told = false;
    }
    if (news.finished) Stop();
    return news;
}

bool SearchWorker::IsStuck(std::size_t& directory) const {
    if (job_ == nullptr || GetTickCount64() - job_->lastAnswer < kLongestCall) return false;
    const std::size_t clip = job_->clip;
    if (clip >= job_->plan->clips.size()) return false;
    directory = job_->plan->clips[clip].directory;
    return true;
}

DWORD WINAPI SearchWorker::Run(void* parameter) noexcept {
    SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, nullptr);
    SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_BELOW_NORMAL);
    const std::unique_ptr<std::shared_ptr<Job>> held(static_cast<std::shared_ptr<Job>*>(parameter));
    Job& job = **held;
    try {
        QuietFiles files;
        ContentSearch(files, *job.plan).Run(job);
        job.Finish();
    } catch (const std::exception&) {
        // Without memory the search ends with what it has.
        job.Finish();
    }
    return 0;
}
