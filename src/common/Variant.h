#pragma once

#include <cstdint>
#include <variant>

#include "common/Text.h"

// The kinds of a variant that hold no value. An argument that was not given, one that is empty and one that is null are
// three different things.
struct NotGiven {
    bool operator==(const NotGiven&) const = default;
};
struct Empty {
    bool operator==(const Empty&) const = default;
};
struct Null {
    bool operator==(const Null&) const = default;
};

// Days since 30 December 1899, the time of day as the fraction.
struct Date {
    double days;
    bool operator==(const Date&) const = default;
};

// A value that carries its kind.
using Variant = std::variant<NotGiven, Empty, Null, bool, std::uint8_t, std::int16_t, std::int32_t, double, Date, Text>;
