#include "platform/Handle.h"

#include "platform/windows/Win32.h"

namespace platform {

Status CloseHandle(Handle handle) noexcept {
    return windows::StatusOf(::CloseHandle(windows::SystemHandleOf<HANDLE>(handle)));
}

}  // namespace platform
