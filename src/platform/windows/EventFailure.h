#pragma once

#include <functional>

// An exception from an event handler must not unwind through Windows code, which calls the window procedure. The
// procedure therefore stores the exception, and the seam call that dispatches the events rethrows it.
namespace platform::windows {

// Calls an event handler and stores any exception from it. Does nothing if the handler is empty, or if a stored
// exception is waiting to be rethrown.
void InvokeHandler(const std::function<void()>& handler);

// Rethrows the stored exception, if there is one.
void RethrowEventFailure();

// Makes a blocked GetMessage call return, so that a modal loop immediately checks whether its window still exists.
// GetMessage handles messages sent by other programs internally, without returning.
void WakeModalLoop();

}  // namespace platform::windows
