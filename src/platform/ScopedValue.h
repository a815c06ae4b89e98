#pragma once

#include <utility>

namespace platform {

// Sets a variable and restores its previous value at the end of the scope.
template <typename Value>
class ScopedValue {
public:
    ScopedValue(Value& variable, Value value) : variable_(variable), previous_(std::exchange(variable, value)) {}
    ~ScopedValue() { variable_ = previous_; }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    Value& variable_;
    Value previous_;
};

}  // namespace platform
