#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <utility>

// The numbers that the program's messages show; the same error always bears the same one.
enum class ErrorNumber : int {
    InvalidArgument = 5,
    Overflow = 6,
    OutOfMemory = 7,
    IndexOutOfRange = 9,
    TypeMismatch = 13,
    Internal = 51,
    FileNotFound = 53,
    FileError = 57,
    DiskFull = 61,
    FileTooShort = 62,
    AccessDenied = 70,
    PathError = 76,
    ObjectMissing = 91,
    DuplicateKey = 457,
};

// An error inside a unit: a number and a German description for the user. The operation that the unit offers
// catches its own; none travels on to another unit unless the declaration says so.
class RuntimeError : public std::exception {
 public:
    RuntimeError(ErrorNumber number, std::wstring description)
        : number_(number), description_(std::move(description)) {}
    // With the description that belongs to the number.
    explicit RuntimeError(ErrorNumber number);

    int Number() const { return static_cast<int>(number_); }
    const std::wstring& Description() const { return description_; }
    const char* what() const noexcept override { return "NXClip runtime error"; }

 private:
    ErrorNumber number_;
    std::wstring description_;
};

// What the system's error code of a failed file call says, as an error of ours; `path` is part of the
// description.
RuntimeError FileErrorOf(std::uint32_t systemCode, const std::wstring& path);

// That the disk which holds the file is full.
RuntimeError DiskFullError(const std::wstring& path);

// What the exception that is being handled means to the user: an error of ours is itself, memory that could
// not be had is OutOfMemory, anything else Internal.
RuntimeError ErrorBeingHandled();

// Runs an action; the error that ended it, if one did.
template <typename Action>
std::optional<RuntimeError> ErrorIn(Action&& action) {
    try {
        action();
        return std::nullopt;
    } catch (const std::exception&) {
        return ErrorBeingHandled();
    }
}

// Shows the user the error's description.
void TellError(const RuntimeError& error);

// Runs an action. False when an error ended it, which the user has been told then.
template <typename Action>
bool Succeeds(Action&& action) {
    const std::optional<RuntimeError> error = ErrorIn(action);
    if (error) TellError(*error);
    return !error;
}
