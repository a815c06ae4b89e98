#include "common/Conversion.h"

#include <cmath>
#include <cstddef>

#include "common/Error.h"
#include "platform/Regional.h"

std::optional<std::int32_t> IntegerValue(const Variant& value) {
    if (const auto* const byte = std::get_if<std::uint8_t>(&value)) {
        return *byte;
    }
    if (const auto* const integer = std::get_if<std::int16_t>(&value)) {
        return *integer;
    }
    if (const auto* const number = std::get_if<std::int32_t>(&value)) {
        return *number;
    }
    return {};
}

bool IsNumeric(const Variant& value) {
    if (const Text* const text = std::get_if<Text>(&value)) {
        std::int32_t number = 0;
        return platform::VarI4FromStr(*text, number) != platform::DispTypeMismatch;
    }
    return IntegerValue(value).has_value();
}

std::int32_t LongFrom(const Variant& value) {
    if (const Text* const text = std::get_if<Text>(&value)) {
        std::int32_t number = 0;
        const platform::Status status = platform::VarI4FromStr(*text, number);
        if (status != platform::StatusSuccess) {
            Raise(status == platform::DispOverflow ? RuntimeError::Overflow : RuntimeError::TypeMismatch);
        }
        return number;
    }
    const std::optional<std::int32_t> number = IntegerValue(value);
    if (!number) {
        Raise(RuntimeError::TypeMismatch);
    }
    return *number;
}

std::int16_t IntegerFrom(double number) {
    const double rounded = std::nearbyint(number);  // ties to even, the C library's default rounding mode
    if (!(rounded >= INT16_MIN && rounded <= INT16_MAX)) {
        Raise(RuntimeError::Overflow);
    }
    return static_cast<std::int16_t>(rounded);
}

Text TextFrom(const Variant& value) {
    if (const Text* const text = std::get_if<Text>(&value)) {
        return *text;
    }
    if (const Date* const date = std::get_if<Date>(&value)) {
        return platform::VarBstrFromDate(date->days);
    }
    const std::optional<std::int32_t> number = IntegerValue(value);
    return number ? DecimalText(*number) : Text();
}
