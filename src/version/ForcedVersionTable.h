#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "common/Text.h"
#include "settings/ProgOption.h"
#include "settings/Registry.h"

// The section below a product's root that contains its table. Must not be "Reporting": that key below the main
// product's root is the reporting module's root.
inline constexpr char16_t VersionSection[] = u"Version";
inline constexpr char16_t TableKey[] = u"ForcedVersion";

// Returns the name of a version in the version list, or an empty string if the list doesn't contain it.
Text VersionName(std::int32_t version);

// One product's forced version tables in the registry, and the version in force for the user who runs the program. A
// product has one table for the local machine and one for the current user; `localMachine` selects the table. Entries
// aren't cached: every operation reads or writes the registry.
//
// An entry is a registry value. Its name is a user's name, or empty for the default entry; its data is the version
// number. An item string contains a whole table, such as "(Standard)=3;hugo=0;": every item ends with ";", and the
// default entry is called "(Standard)".
class ForcedVersionTable {
public:
    // Sets the options through which the table accesses the registry. Must be called first.
    void ProgOptionBind(std::shared_ptr<ProgOption> progOption) { progOption_ = std::move(progOption); }

    // Resolves the version in force and records the user's name in the registry. Raises 6 (overflow) if an entry's text
    // is a number that exceeds 32 bits, and propagates the registry error if the user's name can't be recorded.
    void Init();

    // Returns the version at a level of the resolution. Level 0 uses all entries, 1 all except the current user's
    // default entry, 2 only the local machine's default entry, 3 none. Any other level is treated as 0. Rounds `level`
    // to an integer. Raises 6 (overflow) if the integer doesn't fit in 16 bits.
    [[nodiscard]] std::int32_t VersionInForce(std::optional<double> level = {}) const;

    // Returns the number stored in an entry, or -1 if the entry is missing or isn't a number. Raises 6 (overflow) if
    // the entry's text is a number that exceeds 32 bits.
    [[nodiscard]] std::int32_t ForcedVersion(bool localMachine, const Text& regValue) const;
    // Stores a number in an entry and propagates registry errors. A negative number deletes the entry without raising
    // errors.
    void ForcedVersion(bool localMachine, const Text& regValue, std::int32_t forcedVersion);

    // Deletes the table's key. Raises no errors; if the key can't be deleted, it remains.
    void ForcedVersionClear(bool localMachine);

    // Returns the table as an item string in registry order. Raises no errors; stops at the first entry that can't be
    // read.
    [[nodiscard]] Text ForcedVersionAll(bool localMachine) const;
    // Replaces the table with the items. Skips malformed items and items whose value is negative or not a number.
    // Raises 6 (overflow) if a number exceeds 32 bits, and propagates registry errors; items before the failing one
    // remain set.
    void ForcedVersionAll(bool localMachine, const Text& itemsString);

    // Returns the name and number of every version as an item string.
    [[nodiscard]] static Text Versions();

private:
    static constexpr std::size_t StartLevel = 3;

    [[nodiscard]] Text VersionSectionKey() const;
    void ResolveVersion();
    void ForcedCheckOne(bool localMachine, const Text& regValue);
    void ForcedSet(std::int32_t forced) { versions_[0] = forced; }

    std::shared_ptr<ProgOption> progOption_;
    std::array<std::int32_t, StartLevel + 1> versions_{};  // indexed by level; index 0 holds the running result
};
