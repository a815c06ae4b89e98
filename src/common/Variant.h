#pragma once

#include <cstdint>
#include <variant>

#include "common/Text.h"

// Types for a variant without a value. A missing argument, an empty value and a null value are all different.
struct NotGiven {
    bool operator==(const NotGiven&) const = default;
};
struct Empty {
    bool operator==(const Empty&) const = default;
};
struct Null {
    bool operator==(const Null&) const = default;
};

// Days since 30 December 1899; the fraction is the time of day.
struct Date {
    double days;
    bool operator==(const Date&) const = default;
};

using Variant = std::variant<NotGiven, Empty, Null, bool, std::uint8_t, std::int16_t, std::int32_t, double, Date, Text>;
