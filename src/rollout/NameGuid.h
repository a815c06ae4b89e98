#pragma once

#include <string>

#include "common/Text.h"

// The name-based GUID (RFC 4122, version 5: by SHA-1, in the namespace of URLs) of a name in UTF-8: 32 upper-case
// hexadecimal digits in five groups, in braces. The same name has the same GUID everywhere and always.
Text NameGuid(const std::string& name);
