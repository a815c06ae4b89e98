#pragma once

#include <doctest/doctest.h>

#include <cstdint>
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
        std::string shown;
        for (const char16_t character : text) {
            shown += character < 0x80 ? std::string(1, static_cast<char>(character))
                                      : "\\u" + std::to_string(static_cast<unsigned>(character));
        }
        return shown.c_str();
    }
};
}  // namespace doctest

// The error that `steps` raise; number 0 when they raise none.
template <typename Steps>
Error RaisedBy(Steps&& steps) {
    const JumpTrap trap(steps);
    return trap.Caught() ? Error{LastError().Number(), LastError().Description()} : Error{0, {}};
}
