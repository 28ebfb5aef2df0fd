#pragma once

#include <utility>

// Sets a flag while it lives; afterwards it is as it was before.
class SetWhile {
 public:
    explicit SetWhile(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
    ~SetWhile() { flag_ = before_; }
    SetWhile(const SetWhile&) = delete;
    SetWhile& operator=(const SetWhile&) = delete;

 private:
    bool& flag_;
    bool before_;
};
