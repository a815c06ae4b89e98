#pragma once

#include <cstdint>
#include <variant>

#include "common/Text.h"

// An entry of a forced version table, from its item "name=number".
struct ForcedVersionItem {
    Text valueName;  // in the registry: empty for the default entry, whose item is named "(Standard)"
    std::int32_t version;
};

// Why a piece of an item string is passed over, in the order in which a piece is judged.
enum class ItemFault { NoEquals, SeveralEquals, NoNumber, NegativeNumber };

// Judges a piece of an item string. Raises the overflow error (6) for a number beyond 32 bits.
std::variant<ForcedVersionItem, ItemFault> JudgeItem(const Text& piece);

// The default entry's item has a name, its registry value has none; all other names are alike.
Text ItemNameOf(const Text& name);
Text ValueNameOf(const Text& name);
