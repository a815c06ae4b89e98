#pragma once

#include <exception>
#include <utility>

// An exception from an event handler must not unwind through Windows code, which calls the window procedure. The
// procedure therefore stores the exception, and the seam call that dispatches the events rethrows it.
namespace platform::windows {

// True while a stored exception hasn't been rethrown yet. Meanwhile no further handler is called.
bool HasEventFailure();
void StoreEventFailure(std::exception_ptr failure);
// Rethrows the stored exception, if there is one.
void RethrowEventFailure();

// Makes a pending GetMessage call return, so that a modal loop checks at once whether its window still exists. Messages
// that other programs send are handled inside GetMessage, which doesn't return after them.
void WakeModalLoop();

template <typename Handler>
void InvokeHandler(Handler&& handler) {
    if (HasEventFailure()) {
        return;
    }
    try {
        std::forward<Handler>(handler)();
    } catch (...) {
        StoreEventFailure(std::current_exception());
    }
}

}  // namespace platform::windows
