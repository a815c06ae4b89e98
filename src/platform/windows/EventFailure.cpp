#include "platform/windows/EventFailure.h"

#include "platform/windows/Win32.h"

namespace platform::windows {

namespace {

std::exception_ptr kept;

}  // namespace

bool EventFailed() {
    return kept != nullptr;
}

void EventFailureKeep(std::exception_ptr failure) {
    kept = std::move(failure);
    ModalLoopWake();
}

void EventFailureThrow() {
    if (kept != nullptr) {
        std::rethrow_exception(std::exchange(kept, nullptr));
    }
}

void ModalLoopWake() {
    ::PostThreadMessageW(::GetCurrentThreadId(), WM_NULL, 0, 0);
}

}  // namespace platform::windows
