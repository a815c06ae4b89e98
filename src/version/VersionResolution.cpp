#include "version/VersionResolution.h"

#include "common/Environment.h"

namespace {

constexpr std::int32_t Full = 0;
constexpr std::int32_t Demo = 1;
constexpr std::int32_t Lawyer = 2;
constexpr std::int32_t Classic = 4;
constexpr std::int32_t Client = 5;
constexpr std::int32_t NotInstalled = 99;

}  // namespace

UserNames CurrentUserNames() {
    return {EnvironmentVariable(u"USERNAME"), EnvironmentVariable(u"USERDNSDOMAIN"),
            EnvironmentVariable(u"USERDOMAIN")};
}

std::array<ResolutionStep, 5> ResolutionSteps(const UserNames& user) {
    return {{{true, {}, 2},
             {true, user.name, 1},
             {true, user.InDnsDomain(), 1},
             {true, user.InDomain(), 1},
             {false, {}, 0}}};
}

// Today every installation starts from Full. An installation that started from Demo or Browser could only be forced to
// Demo.
EntryEffect EffectOf(std::int32_t startVersion, bool localMachine, std::int32_t forced) {
    if (forced < 0) {
        return EntryEffect::NoEntry;
    }
    switch (startVersion) {
        case Lawyer:
        case Classic:
        case Client:
        case NotInstalled: return EntryEffect::StartVersionForbids;
        case Full:
            // Only an administrator can write to the local-machine store, so only that store can force Full.
            return forced == Full && !localMachine ? EntryEffect::FullNeedsLocalMachine : EntryEffect::Applies;
        default: return forced == Demo ? EntryEffect::Applies : EntryEffect::StartVersionForbids;
    }
}
