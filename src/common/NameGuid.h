#pragma once

#include <string>

#include "common/Text.h"

// Returns the name-based GUID of a UTF-8 name (RFC 4122, version 5, URL namespace) in braces, with uppercase hex
// digits. The same name always yields the same GUID.
Text NameGuid(const std::string& name);
