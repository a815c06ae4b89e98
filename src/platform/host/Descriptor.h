#pragma once

#include <unistd.h>

#include <utility>

namespace platform::host {

// An open file of the host, closed with its owner; with it go the locks that were taken through it.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }

    [[nodiscard]] int Number() const { return number_; }
    [[nodiscard]] bool IsOpen() const { return number_ >= 0; }

private:
    int number_ = -1;
};

}  // namespace platform::host
