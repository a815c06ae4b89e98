#include "common/OwnedHandle.h"

void OwnedHandle::Close() noexcept {
    if (handle_ != 0) {
        platform::CloseHandle(handle_);
        handle_ = 0;
    }
}
