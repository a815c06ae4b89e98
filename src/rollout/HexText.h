#pragma once

#include <cstdint>

#include "common/Text.h"

// The number in 8 upper-case hexadecimal digits.
Text HexText(std::uint32_t number);
