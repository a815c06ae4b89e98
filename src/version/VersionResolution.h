#pragma once

#include <array>
#include <cstdint>

#include "common/Text.h"

// The order and the rules by which forced versions determine the version in force for a user.

// The version of an installation before any entry is applied: Full.
inline constexpr std::int32_t InitialVersion = 0;

// The names from which the spellings of a user in the tables are built.
struct UserNames {
    Text name;
    Text dnsDomain;
    Text domain;

    [[nodiscard]] Text InDnsDomain() const { return dnsDomain + u"." + name; }
    [[nodiscard]] Text InDomain() const { return domain + u"." + name; }
};

// Returns the names of the user who runs the program, from the environment. An unset variable gives an empty name.
UserNames CurrentUserNames();

// One step of the resolution: the entry that it reads.
struct ResolutionStep {
    bool localMachine;   // whether the entry is in the local machine's store or in the current user's
    Text valueName;      // empty for the default entry
    std::int16_t level;  // the level of ForcedVersionTable::VersionInForce that this step contributes to first
};

// Returns the steps for a user, from the weakest to the strongest: each entry that applies replaces the result of the
// previous steps.
std::array<ResolutionStep, 5> ResolutionSteps(const UserNames& user);

// What an entry does to the result.
enum class EntryEffect { NoEntry, Applies, StartVersionForbids, FullNeedsLocalMachine };

// Returns the effect of an entry with the number `forced`, which is negative if there is no usable entry. The rules
// depend only on the starting version, so that a later entry can override an earlier one.
EntryEffect EffectOf(std::int32_t startVersion, bool localMachine, std::int32_t forced);
