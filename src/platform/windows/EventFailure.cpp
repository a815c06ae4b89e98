#include "platform/windows/EventFailure.h"

#include "platform/windows/Win32.h"

namespace platform::windows {

namespace {

std::exception_ptr stored;

}  // namespace

bool HasEventFailure() {
    return stored != nullptr;
}

void StoreEventFailure(std::exception_ptr failure) {
    stored = std::move(failure);
    WakeModalLoop();
}

void RethrowEventFailure() {
    if (stored != nullptr) {
        std::rethrow_exception(std::exchange(stored, nullptr));
    }
}

void WakeModalLoop() {
    ::PostThreadMessageW(::GetCurrentThreadId(), WM_NULL, 0, 0);
}

}  // namespace platform::windows
