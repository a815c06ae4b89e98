#pragma once

#include <cstdint>
#include <new>
#include <optional>
#include <stdexcept>

#include "common/Text.h"
#include "platform/Handle.h"

// A raised error. Thrown by Raise and caught by a trap.
struct Error : std::runtime_error {
    Error(std::int32_t thisNumber, Text thisDescription);

    std::int32_t number;
    Text description;
};

// The number and description of the last raised error, kept until a trap handles the error or Clear is called. An error
// raised without a description of its own uses this one (the pending description).
class ErrorState {
public:
    [[nodiscard]] std::int32_t Number() const { return number_; }
    [[nodiscard]] const Text& Description() const { return description_; }
    void Set(const Error& error) {
        number_ = error.number;
        description_ = error.description;
    }
    void Clear() noexcept {
        number_ = 0;
        description_.clear();
    }

private:
    std::int32_t number_ = 0;
    Text description_;
};

// Returns the program's only error state.
ErrorState& LastError();

// Run-time errors, by their conventional numbers.
enum class RuntimeError : std::int32_t {
    InvalidArgument = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    BadFileName = 52,
    FileNotFound = 53,
    DeviceIo = 57,
    FileExists = 58,
    DiskFull = 61,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
};

// Returns the error with its German description.
Error RuntimeErrorOf(RuntimeError error);

// Raises an error: sets the error state and throws an Error.
[[noreturn]] void Raise(const Error& error);
[[noreturn]] void Raise(std::int32_t number, const Text& description);
// Raises a run-time error with its German description.
[[noreturn]] void Raise(RuntimeError error);
[[noreturn]] void Raise(RuntimeError error, const Text& description);

// Raises the run-time error that corresponds to a file call's status. Does nothing on StatusSuccess.
void RaiseFileStatus(platform::Status status);

// Runs `steps`. If an error is raised, clears the error state and returns the error. Otherwise leaves the error state
// unchanged, because it may belong to an outer trap.
template <typename Steps>
std::optional<Error> TrapError(const Steps& steps) {
    std::optional<Error> trapped;
    try {
        steps();
    } catch (const Error& error) {
        trapped = error;
    } catch (const std::bad_alloc&) {
        trapped = RuntimeErrorOf(RuntimeError::OutOfMemory);
    }
    if (trapped) {
        LastError().Clear();
    }
    return trapped;
}

// Runs each of `steps`; an error ends only the step that raised it. The error stays in the error state for the later
// steps and is cleared after the last one. If no step fails, leaves the error state unchanged.
template <typename... Steps>
void IgnoreErrors(const Steps&... steps) {
    bool trapped = false;
    const auto run = [&](const auto& step) {
        if (const std::optional<Error> error = TrapError(step)) {
            LastError().Set(*error);
            trapped = true;
        }
    };
    (run(steps), ...);
    if (trapped) {
        LastError().Clear();
    }
}
