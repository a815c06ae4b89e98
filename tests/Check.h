#pragma once

#include <doctest/doctest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "common/Text.h"

// Prints strings of failed checks as text, and traps errors so that tests can check them.

namespace doctest {
template <>
struct StringMaker<Text> {
    static String convert(const Text& text) {
        return std::filesystem::path(text).string().c_str();  // in the native encoding
    }
};
}  // namespace doctest

// Returns the error that `steps` raise, or an error with the number 0.
template <typename Steps>
Error RaisedBy(Steps&& steps) {
    return TrapError(steps).value_or(Error(0, {}));
}
