#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "common/Text.h"
#include "settings/ProgOption.h"
#include "settings/Registry.h"

// The section below a product's root that holds its table. The reporting module's root is the key "Reporting" below the
// main product's: with any other section name no product's table can fall on the other's.
inline constexpr TextView VersionSection = u"Version";
inline constexpr TextView TableKey = u"ForcedVersion";

// The rule by which a forced version from one of the two stores takes the place of a starting version, or is refused.
[[nodiscard]] bool ForcedVersionApplies(std::int32_t startVersion, bool localMachine, std::int32_t forced);

// One product's forced versions, which fix the version that a user gets, and the version in force for the user who runs
// the program. The table lives in the registry alone, once for the local machine and once for the current user; every
// operation goes there anew, and its `localMachine` chooses between the two.
//
// An entry is a registry value: its name is a user's name, or empty for the default entry; its data is the version
// number. As an item string a whole table is one text, "(Standard)=3;hugo=0;": every item ends in ";", and the default
// entry is named "(Standard)".
class ForcedVersionTable {
public:
    // The options through which the table is reached; must be bound before anything else is called.
    void ProgOptionBind(std::shared_ptr<ProgOption> progOption) { progOption_ = std::move(progOption); }

    // Starts from Full and resolves the version in force. Raises the overflow error for an entry that reads as a number
    // beyond 32 bits, and what the registry raises when the note of the user's name cannot be written.
    void Init();

    // The version as it stood at a level of the resolution: 0 everything applied, 1 without the current user's default
    // entry, 2 the machine's default entry alone, 3 no entry. Any other level is 0. It does not change after Init.
    // The level becomes a 16-bit number: a fraction rounds, and one beyond 16 bits raises the overflow error (6).
    [[nodiscard]] std::int32_t VersionInForce(std::optional<double> level = {}) const;

    // The number stored under a value name (the default entry's is empty), -1 for nothing usable. Raises the overflow
    // error for a text that reads as a number beyond 32 bits.
    [[nodiscard]] std::int32_t ForcedVersion(bool localMachine, const Text& regValue) const;
    // Stores a number from 0 upward, and raises what the registry raises; a negative one deletes the entry, silently.
    void ForcedVersion(bool localMachine, const Text& regValue, std::int32_t forcedVersion);

    // Deletes the table's key. Raises nothing; a key that cannot be deleted stays.
    void ForcedVersionClear(bool localMachine);

    // The table as an item string, in the registry's order, up to the first entry that cannot be read. Raises nothing.
    [[nodiscard]] Text ForcedVersionAll(bool localMachine) const;
    // Replaces the table by the items. Pieces that are no items, numbers that are none and negative ones are passed
    // over. Raises the overflow error and what the registry raises; the items before that one are set.
    void ForcedVersionAll(bool localMachine, const Text& itemsString);

    // The version list: every version's name and number, as an item string.
    [[nodiscard]] static Text Versions();

private:
    [[nodiscard]] Text VersionSectionKey() const;
    void ResolveVersion();
    void ForcedCheckOne(bool localMachine, const Text& regValue);
    void ForcedSet(std::int32_t forced) { versionInForce_ = forced; }

    std::shared_ptr<ProgOption> progOption_;
    std::int32_t versionInForce_ = 0;
    std::int32_t startVersion_ = 0;
    std::int32_t machineDefaultVersion_ = 0;
    std::int32_t machineVersion_ = 0;
};
