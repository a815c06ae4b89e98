#pragma once

#include "platform/Handle.h"

// Owns a file or process handle and closes it on destruction.
class OwnedHandle {
public:
    explicit OwnedHandle(platform::Handle handle) : handle_(handle) {}
    ~OwnedHandle() { Close(); }
    OwnedHandle(const OwnedHandle&) = delete;
    OwnedHandle& operator=(const OwnedHandle&) = delete;

    [[nodiscard]] platform::Handle Get() const { return handle_; }
    void Close() noexcept {
        if (handle_ != 0) {
            platform::CloseHandle(handle_);
            handle_ = 0;
        }
    }

private:
    platform::Handle handle_;
};
