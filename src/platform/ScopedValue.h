#pragma once

#include <utility>

namespace platform {

// Sets a variable and restores its earlier value at the end of the scope.
template <typename Value>
class ScopedValue {
public:
    ScopedValue(Value& variable, Value value) : variable_(variable), earlier_(std::exchange(variable, value)) {}
    ~ScopedValue() { variable_ = earlier_; }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    Value& variable_;
    Value earlier_;
};

}  // namespace platform
