#pragma once

#include <array>
#include <cstdint>

#include "common/Text.h"

// The rules that decide which of the forced versions is in force for a user.

// The version of an installation before any entry is applied: Full.
inline constexpr std::int32_t InitialVersion = 0;

// A user's name and domains, from which the names of the user's table entries are built.
struct UserNames {
    Text name;
    Text dnsDomain;
    Text domain;

    [[nodiscard]] Text InDnsDomain() const { return dnsDomain + u"." + name; }
    [[nodiscard]] Text InDomain() const { return domain + u"." + name; }
};

// Returns the current user's names from environment variables. The name for an unset variable is empty.
UserNames CurrentUserNames();

// One step of the resolution, which reads one entry.
struct ResolutionStep {
    bool localMachine;   // true for the local machine's store, false for the current user's
    Text valueName;      // empty for the default entry
    std::int16_t level;  // the highest level of ForcedVersionTable::VersionInForce that uses this step
};

// Returns the steps for a user in order of priority, lowest first: an entry that applies overrides all earlier steps.
std::array<ResolutionStep, 5> ResolutionSteps(const UserNames& user);

// The effect of an entry on the result.
enum class EntryEffect { NoEntry, Applies, StartVersionForbids, FullNeedsLocalMachine };

// Returns the effect of an entry that contains the number `forced`, which is negative if there is no usable entry. The
// rules consider the starting version, not the result so far, so that a later entry can override an earlier one.
EntryEffect EffectOf(std::int32_t startVersion, bool localMachine, std::int32_t forced);
