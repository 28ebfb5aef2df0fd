#include "windows/main/PngWorker.h"

#include <objidl.h>

#include <algorithm>
#include <atomic>
#include <exception>
#include <new>
#include <utility>

#include "platform/win32/SystemPath.h"
#include "windows/controls/PngDecoder.h"

// Shared by the thread and the window: whoever is last frees it.
struct PngWorker::Job {
    std::wstring path;
    std::int64_t place = 0;  // of the picture in the file, bytes
    std::int64_t size = 0;
    HWND window = nullptr;
    UINT message = 0;
    std::atomic<bool> stopped = false;
    std::optional<PreviewBytes> dib;  // the thread's until it has finished
    std::atomic<bool> finished = false;
};

namespace {

constexpr DWORD kPatienceAtTheEnd = 1000;  // milliseconds

// A part of a file as the system's decoders read it, until it is stopped. Lives as long as its scope, however
// long somebody would keep it.
class PartStream : public IStream {
 public:
    PartStream(const std::wstring& path, std::int64_t place, std::int64_t size,
               const std::atomic<bool>& stopped)
        : file_(CreateFileW(SystemPath(path).c_str(), GENERIC_READ,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                            FILE_FLAG_SEQUENTIAL_SCAN, nullptr)),
          place_(place),
          size_(size),
          stopped_(stopped) {}
    virtual ~PartStream() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override {
        if (object == nullptr) return E_POINTER;
        const bool known = id == IID_IUnknown || id == IID_ISequentialStream || id == IID_IStream;
        *object = known ? static_cast<IStream*>(this) : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return 2; }
    ULONG STDMETHODCALLTYPE Release() noexcept override { return 1; }
    HRESULT STDMETHODCALLTYPE Read(void* place, ULONG count, ULONG* read) noexcept override {
        if (read != nullptr) *read = 0;
        if (place == nullptr) return STG_E_INVALIDPOINTER;
        if (stopped_ || !file_.IsSet()) return E_ABORT;
        const std::int64_t left = std::max<std::int64_t>(size_ - at_, 0);
        const auto wanted = static_cast<DWORD>(std::min<std::int64_t>(count, left));
        OVERLAPPED from{};
        from.Offset = static_cast<DWORD>(place_ + at_);
        from.OffsetHigh = static_cast<DWORD>((place_ + at_) >> 32);
        DWORD done = 0;
        if (wanted > 0 && !ReadFile(file_.Get(), place, wanted, &done, &from)) return E_FAIL;
        at_ += done;
        if (read != nullptr) *read = done;
        return done == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD from, ULARGE_INTEGER* now) noexcept override {
        const std::int64_t base = from == STREAM_SEEK_END ? size_ : from == STREAM_SEEK_CUR ? at_ : 0;
        if (base + move.QuadPart < 0) return STG_E_INVALIDFUNCTION;
        at_ = base + move.QuadPart;
        if (now != nullptr) now->QuadPart = static_cast<ULONGLONG>(at_);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* state, DWORD) noexcept override {
        if (state == nullptr) return STG_E_INVALIDPOINTER;
        *state = {};
        state->type = STGTY_STREAM;
        state->cbSize.QuadPart = static_cast<ULONGLONG>(size_);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) noexcept override {
        return STG_E_ACCESSDENIED;
    }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) noexcept override { return STG_E_ACCESSDENIED; }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*,
                                     ULARGE_INTEGER*) noexcept override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Revert() noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) noexcept override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) noexcept override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) noexcept override { return E_NOTIMPL; }

 private:
    UniqueFile file_;
    std::int64_t place_;
    std::int64_t size_;
    std::int64_t at_ = 0;
    const std::atomic<bool>& stopped_;
};

// COM for a thread.
class ComScope {
 public:
    ComScope() : ready_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
    ~ComScope() {
        if (ready_) CoUninitialize();
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;
    bool IsReady() const { return ready_; }

 private:
    bool ready_;
};

}  // namespace

PngWorker::~PngWorker() {
    Stop();
    if (running_ != nullptr) WaitForSingleObject(thread_.Get(), kPatienceAtTheEnd);
}

void PngWorker::SetListener(HWND window, UINT message) {
    window_ = window;
    message_ = message;
}

bool PngWorker::Start(const std::wstring& clipFile, const CFormat& format) {
    Stop();
    // The message of a decoding that was broken off may still come, or never.
    if (running_ != nullptr && running_->finished) running_ = nullptr;
    wanted_ = std::make_shared<Job>();
    wanted_->path = clipFile;
    wanted_->place = format.DataOffset;
    wanted_->size = format.DataSize;
    wanted_->window = window_;
    wanted_->message = message_;
    return running_ != nullptr || Launch();
}

bool PngWorker::Launch() {
    auto forThread = std::make_unique<std::shared_ptr<Job>>(wanted_);
    thread_.Reset(CreateThread(nullptr, 0, &PngWorker::Run, forThread.get(), 0, nullptr));
    if (!thread_.IsSet()) {
        wanted_ = nullptr;
        return false;
    }
    (void)forThread.release();  // the thread's now
    running_ = wanted_;
    return true;
}

void PngWorker::Stop() {
    wanted_ = nullptr;
    if (running_ == nullptr) return;
    running_->stopped = true;
    // A call that waits for a drive comes back.
    CancelSynchronousIo(thread_.Get());
}

std::optional<PngWorker::Answer> PngWorker::Take() {
    if (running_ == nullptr || !running_->finished) return std::nullopt;
    const std::shared_ptr<Job> ended = std::exchange(running_, nullptr);
    thread_.Reset();
    if (ended == wanted_) {
        wanted_ = nullptr;
        return Answer{std::move(ended->dib)};
    }
    if (wanted_ == nullptr || Launch()) return std::nullopt;
    return Answer{};
}

DWORD WINAPI PngWorker::Run(void* parameter) noexcept {
    SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, nullptr);
    SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_BELOW_NORMAL);
    const std::unique_ptr<std::shared_ptr<Job>> held(static_cast<std::shared_ptr<Job>*>(parameter));
    Job& job = **held;
    try {
        const ComScope com;
        PartStream png(job.path, job.place, job.size, job.stopped);
        if (com.IsReady()) job.dib = DecodePng(png, job.stopped);
    } catch (const std::exception&) {
        // Without memory there is no picture.
        job.dib.reset();
    }
    if (job.stopped) job.dib.reset();
    job.finished = true;
    PostMessageW(job.window, job.message, 0, 0);
    return 0;
}
