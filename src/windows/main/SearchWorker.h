#pragma once

#include <windows.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "engine/search/ContentSearch.h"
#include "platform/win32/SystemHandles.h"

// Reads the files of a search in a thread of its own, which does nothing but that. What it finds waits until
// it is taken; a message says that there is something. A thread whose drive does not answer is given up.
class SearchWorker {
 public:
    SearchWorker() = default;
    ~SearchWorker() { Stop(); }
    SearchWorker(const SearchWorker&) = delete;
    SearchWorker& operator=(const SearchWorker&) = delete;

    // Who gets `message` when there is news; before the first start.
    void SetListener(HWND window, UINT message);
    // Begins with a plan and forgets the one before. False when there can be no thread.
    bool Start(std::shared_ptr<const SearchPlan> plan);
    // Nothing comes after this. Does not wait for a drive.
    void Stop();
    bool IsAtWork() const { return job_ != nullptr; }

    struct News {
        // The clips' places in the plan.
        std::vector<std::pair<std::size_t, ContentHit>> hits;
        std::size_t read = 0;  // so many clips of the plan
        std::size_t unreadable = 0;
        bool finished = false;
    };
    // What there is since the last time. Nothing comes after the finish.
    News Take();
    // True when one call for a file takes longer than anybody waits; `directory` is the place in the plan of
    // the one that does not answer. Nothing more comes from there: to be started anew without it.
    bool IsStuck(std::size_t& directory) const;

 private:
    struct Job;
    static DWORD WINAPI Run(void* parameter) noexcept;

    HWND window_ = nullptr;
    UINT message_ = 0;
    std::shared_ptr<Job> job_;
    UniqueThread thread_;
};
