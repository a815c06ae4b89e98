#include "platform/windows/EventFailure.h"

#include <exception>
#include <utility>

#include "platform/windows/Win32.h"

namespace platform::windows {

namespace {

std::exception_ptr stored;

}  // namespace

void InvokeHandler(const std::function<void()>& handler) {
    if (!handler || stored != nullptr) {
        return;
    }
    try {
        handler();
    } catch (...) {
        stored = std::current_exception();
        WakeModalLoop();
    }
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
