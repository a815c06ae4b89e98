#pragma once

#include <doctest/doctest.h>

#include <filesystem>

#include "common/Error.h"
#include "common/Text.h"

// Makes failed checks print strings as text, and traps errors so that tests can check them.

namespace doctest {
template <>
struct StringMaker<Text> {
    static String convert(const Text& text) {
        return std::filesystem::path(text).string().c_str();  // in the native encoding
    }
};
}  // namespace doctest

// Returns the error that `steps` raises, or an error with number 0 if it raises none.
template <typename Steps>
Error RaisedBy(Steps&& steps) {
    return TrapError(steps).value_or(Error(0, {}));
}
