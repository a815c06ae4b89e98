#pragma once

#include <cstdint>
#include <new>
#include <optional>
#include <stdexcept>

#include "common/Text.h"
#include "platform/Handle.h"

// A raised error on its way to the trap that ends it.
struct Error : std::runtime_error {
    Error(std::int32_t thisNumber, Text thisDescription);

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
    void Clear() noexcept;

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
[[noreturn]] void Raise(const Error& error);
[[noreturn]] void Raise(std::int32_t number, const Text& description);
// With the error's German text as the description.
[[noreturn]] void Raise(RuntimeError error);

// Raises the language's error for a file call's status; StatusSuccess raises nothing.
void RaiseFileStatus(platform::Status status);

// The trap that jumps: runs `steps`, which an error leaves at once, and gives that error. The error state is clear
// then. Without an error the state stays as it was: what it holds may be an outer trap's.
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

// The trap that goes on with the next step: runs each of `steps`, and an error ends its own step alone. The steps
// behind it find it in the error state, which is clear once all have run. Without an error the state stays as it was.
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
