#pragma once

#include <exception>
#include <utility>

// An exception from an event handler must not unwind through Windows code, which calls the window procedure. The
// procedure therefore stores the exception, and the seam call that dispatches the events rethrows it.
namespace platform::windows {

// True while a stored exception is waiting to be rethrown. Until then, no other handler is called.
bool HasEventFailure();
void StoreEventFailure(std::exception_ptr failure);
// Rethrows the stored exception, if there is one.
void RethrowEventFailure();

// Makes a blocked GetMessage call return, so that a modal loop immediately checks whether its window still exists.
// GetMessage handles messages sent by other programs internally, without returning.
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
