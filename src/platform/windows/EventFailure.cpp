#include "platform/windows/EventFailure.h"

namespace platform::windows {

namespace {

std::exception_ptr kept;

}  // namespace

bool EventFailed() {
    return kept != nullptr;
}

void EventFailureKeep(std::exception_ptr failure) {
    kept = std::move(failure);
}

void EventFailureThrow() {
    if (kept != nullptr) {
        std::rethrow_exception(std::exchange(kept, nullptr));
    }
}

}  // namespace platform::windows
