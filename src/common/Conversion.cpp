#include "common/Conversion.h"

#include <cmath>
#include <limits>

#include "common/Error.h"
#include "platform/Regional.h"

namespace {

// One function object out of several, to visit a variant with.
template <typename... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <typename... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

std::int32_t LongFromText(const Text& text) {
    std::int32_t number = 0;
    const platform::Status status = platform::VarI4FromStr(text, number);
    if (status != platform::StatusSuccess) {
        Raise(status == platform::DispOverflow ? RuntimeError::Overflow : RuntimeError::TypeMismatch);
    }
    return number;
}

// std::nearbyint rounds a tie to the even number, the rounding mode that every program starts with.
std::int32_t LongFromDouble(double number) {
    const double rounded = std::nearbyint(number);
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() && rounded <= std::numeric_limits<std::int32_t>::max())) {
        Raise(RuntimeError::Overflow);
    }
    return static_cast<std::int32_t>(rounded);
}

}  // namespace

bool IsNumeric(const Variant& value) {
    return std::visit(Overloaded{[](const NotGiven&) { return false; }, [](const Null&) { return false; },
                                 [](const Date&) { return false; },
                                 [](const Text& text) {
                                     std::int32_t number = 0;
                                     return platform::VarI4FromStr(text, number) != platform::DispTypeMismatch;
                                 },
                                 [](const auto&) { return true; }},
                      value);
}

std::int32_t LongFrom(const Variant& value) {
    return std::visit(
        Overloaded{[](const Empty&) { return 0; },
                   [](const NotGiven&) -> std::int32_t { Raise(RuntimeError::TypeMismatch); },
                   [](const Null&) -> std::int32_t { Raise(RuntimeError::TypeMismatch); },
                   [](bool value_) { return value_ ? -1 : 0; }, [](double number) { return LongFromDouble(number); },
                   [](const Date& date) { return LongFromDouble(date.days); },
                   [](const Text& text) { return LongFromText(text); },
                   [](auto number) { return static_cast<std::int32_t>(number); }},
        value);
}

Text TextFrom(const Variant& value) {
    return std::visit(Overloaded{[](std::uint8_t number) { return DecimalText(number); },
                                 [](std::int16_t number) { return DecimalText(number); },
                                 [](std::int32_t number) { return DecimalText(number); },
                                 [](const Date& date) { return platform::VarBstrFromDate(date.days); },
                                 [](const Text& text) { return text; }, [](const auto&) { return Text(); }},
                      value);
}
