#pragma once

#include <exception>
#include <utility>

// An exception that leaves an event must not travel through the system's own code, which called the window procedure.
// It is kept at the procedure and goes on from the seam's call that serves the events.
namespace platform::windows {

// True from a failed event until the failure has gone on; no further event is told meanwhile.
bool EventFailed();
void EventFailureKeep(std::exception_ptr failure);
// Throws what was kept, if anything was.
void EventFailureThrow();

// A message that another program sends runs within the wait for the next one. This ends that wait, so that a modal show
// looks at once whether its window is still there.
void ModalLoopWake();

template <typename Event>
void EventTell(Event&& event) {
    if (EventFailed()) {
        return;
    }
    try {
        std::forward<Event>(event)();
    } catch (...) {
        EventFailureKeep(std::current_exception());
    }
}

}  // namespace platform::windows
