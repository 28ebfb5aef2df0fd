#pragma once

#include <cstddef>
#include <string>
#include <vector>

// A work that may take long, done a little at a time: the window answers meanwhile, and the user can end it.
class LongWork {
 public:
    virtual ~LongWork() = default;

    // Does the next part. False when there was none left: everything is done then.
    virtual bool Step() = 0;
    // Ends it here; what is done stays.
    virtual void Stop() = 0;

    // In parts.
    virtual std::size_t Done() const = 0;
    virtual std::size_t Count() const = 0;

    // A sentence for each thing that failed.
    virtual const std::vector<std::wstring>& Failures() const = 0;
    // What was done and what was not, in a sentence.
    virtual std::wstring Summary() const = 0;
};
