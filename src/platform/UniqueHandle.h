#pragma once

#include <utility>

// Sole owner of a system handle. `Traits` name its type `Handle`, the value `None()` that owns nothing, and
// `Close(Handle)`. To hand a handle over: make the call, check that it succeeded, then Release.
template <typename Traits>
class UniqueHandle {
 public:
    using Handle = typename Traits::Handle;

    UniqueHandle() = default;
    explicit UniqueHandle(Handle handle) : handle_(handle) {}
    ~UniqueHandle() { Reset(); }
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) Reset(other.Release());
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;

    Handle Get() const { return handle_; }
    bool IsSet() const { return handle_ != Traits::None(); }
    // Gives the ownership to the caller.
    [[nodiscard]] Handle Release() { return std::exchange(handle_, Traits::None()); }
    // Closes what is owned and owns `handle` instead.
    void Reset(Handle handle = Traits::None()) {
        const Handle old = std::exchange(handle_, handle);
        if (old != Traits::None()) Traits::Close(old);
    }

 private:
    Handle handle_ = Traits::None();
};
