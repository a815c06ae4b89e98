#pragma once

#include <cstdint>
#include <new>
#include <utility>

#include "common/Text.h"
#include "platform/Handle.h"

// A raised error on its way to a trap.
struct Error {
    std::int32_t number;
    Text description;
};

// Number and description of the last raised error, from the raise until a trap ends or the state is cleared. Operations
// that raise anew read the description from here: it is their pending description.
class ErrorState {
public:
    [[nodiscard]] std::int32_t Number() const { return number_; }
    [[nodiscard]] const Text& Description() const { return description_; }
    void Set(const Error& error);
    void Clear();

private:
    std::int32_t number_ = 0;
    Text description_;
};

// The program's one error state.
ErrorState& LastError();

// The language's own errors, by their customary numbers.
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

// The error with its German text.
Error RuntimeErrorOf(RuntimeError error);

// Enters the error in the error state and throws it as an Error.
[[noreturn]] void Raise(std::int32_t number, Text description);
// With the error's German text as the description.
[[noreturn]] void Raise(RuntimeError error);

// Raises the language's error for a file call's status; StatusSuccess raises nothing.
void RaiseFileStatus(platform::Status status);

// Runs `steps` and absorbs the error that leaves them, with the error state holding it. True when there was one. The
// one place that catches errors for good; the traps below are its only callers.
template <typename Steps>
bool ErrorAbsorbed(const Steps& steps) {
    try {
        steps();
        return false;
    } catch (const Error& error) {
        LastError().Set(error);
    } catch (const std::bad_alloc&) {
        LastError().Set(RuntimeErrorOf(RuntimeError::OutOfMemory));
    }
    return true;
}

// The trap that jumps: runs `steps` as it is made; an error leaves them at once, and execution goes on behind the
// making of the trap. The error state lasts until the trap ends with its scope.
class JumpTrap {
public:
    template <typename Steps>
    explicit JumpTrap(const Steps& steps) : caught_(ErrorAbsorbed(steps)) {}
    ~JumpTrap() { LastError().Clear(); }
    JumpTrap(const JumpTrap&) = delete;
    JumpTrap& operator=(const JumpTrap&) = delete;

    [[nodiscard]] bool Caught() const { return caught_; }

private:
    bool caught_;
};

// The trap that goes on with the next statement: each call runs one step and absorbs its error, which stays in the
// error state until a later step raises, the state is cleared, or the trap ends with its scope.
class ResumeTrap {
public:
    ResumeTrap() = default;
    ~ResumeTrap() { LastError().Clear(); }
    ResumeTrap(const ResumeTrap&) = delete;
    ResumeTrap& operator=(const ResumeTrap&) = delete;

    // True when the step ran to its end.
    template <typename Step>
    bool operator()(const Step& step) {
        return !ErrorAbsorbed(step);
    }
};
