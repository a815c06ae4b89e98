#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/Handle.h"

namespace platform::host {

// A file descriptor of the host, closed with its owner.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : number_(number) {}
    ~FileDescriptor() { Close(); }
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    [[nodiscard]] int Get() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }
    void Close() {
        if (number_ >= 0) {
            close(std::exchange(number_, -1));
        }
    }

private:
    int number_ = -1;
};

// The status that Windows gives for the failure that an errno number tells; StatusIoDevice where Windows has no like.
Status StatusFromErrno(int number);

// Repeats a call of the host for as long as a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call&& call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

}  // namespace platform::host
