#pragma once

#include <doctest/doctest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "common/Text.h"

// What the cases share: texts printed as text, and errors checked by number and description.

namespace doctest {
template <>
struct StringMaker<Text> {
    static String convert(const Text& text) {
        return std::filesystem::path(text).string().c_str();  // in the system's own encoding
    }
};
}  // namespace doctest

// The error that `steps` raise; number 0 when they raise none.
template <typename Steps>
Error RaisedBy(Steps&& steps) {
    return TrapError(steps).value_or(Error(0, {}));
}
