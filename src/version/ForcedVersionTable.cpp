#include "version/ForcedVersionTable.h"

#include <variant>

#include "common/Conversion.h"
#include "common/Environment.h"
#include "common/Error.h"
#include "version/ForcedVersionItem.h"

namespace {

constexpr std::int32_t Full = 0;
constexpr std::int32_t Demo = 1;
constexpr std::int32_t Lawyer = 2;
constexpr std::int32_t Classic = 4;
constexpr std::int32_t Client = 5;
constexpr std::int32_t NotInstalled = 99;

constexpr TextView TableSection = u"Version\\ForcedVersion";

void Open(Registry& registry, bool localMachine, const Text& path) {
    if (localMachine) {
        registry.KeyOpenLocalMachine(path);
    } else {
        registry.KeyOpenCurrentUser(path);
    }
}

}  // namespace

// The rules look at the starting version alone, so that an entry can undo what an earlier one set. Every installation
// starts from Full today; an installation that starts from another version is held to that one, or to Demo.
bool ForcedVersionApplies(std::int32_t startVersion, bool localMachine, std::int32_t forced) {
    switch (startVersion) {
        case Lawyer:
        case Classic:
        case Client:
        case NotInstalled:
            return false;
        case Full:
            // Only the administrator, who alone can write the local machine's store, sets Full.
            return forced != Full || localMachine;
        default:
            return forced == Demo;
    }
}

Text ForcedVersionTable::VersionSectionKey() const {
    return progOption_->SectionRoot() + u"\\" + Text(VersionSection);
}

std::int32_t ForcedVersionTable::ForcedVersion(bool localMachine, const Text& regValue) const {
    const Text section(TableSection);
    const Variant stored =
        localMachine ? progOption_->LocalMachine(section, regValue) : progOption_->CurrentUser(section, regValue);
    if (std::holds_alternative<Empty>(stored) || !IsNumeric(stored)) {
        return -1;
    }
    return LongFrom(stored);
}

void ForcedVersionTable::ForcedVersion(bool localMachine, const Text& regValue, std::int32_t forcedVersion) {
    const Text section(TableSection);
    if (forcedVersion >= 0) {
        if (localMachine) {
            progOption_->LocalMachine(section, regValue, NotGiven{}, forcedVersion);
        } else {
            progOption_->CurrentUser(section, regValue, NotGiven{}, forcedVersion);
        }
    } else if (localMachine) {
        progOption_->LocalMachineDelete(section, regValue);
    } else {
        progOption_->CurrentUserDelete(section, regValue);
    }
}

void ForcedVersionTable::ForcedVersionClear(bool localMachine) {
    Registry registry;
    IgnoreErrors([&] { Open(registry, localMachine, VersionSectionKey()); },
                 [&] { registry.SubKeyDelete(Text(TableKey)); }, [&] { registry.KeyClose(); });
}

Text ForcedVersionTable::ForcedVersionAll(bool localMachine) const {
    Text items;
    Registry registry;
    const KeyCloser closer(registry);
    TrapError([&] {
        Open(registry, localMachine, VersionSectionKey() + u"\\" + Text(TableKey));
        registry.ValueNameFirst();
        while (!registry.EOF_ValueName()) {
            const Text name = registry.ValueName();
            items += ItemNameOf(name) + u"=" + TextFrom(registry.Value(name)) + u";";
            registry.ValueNameNext();
        }
    });
    return items;
}

void ForcedVersionTable::ForcedVersionAll(bool localMachine, const Text& itemsString) {
    ForcedVersionClear(localMachine);
    for (const Text& item : Split(itemsString, u';')) {
        const auto judged = JudgeItem(item);
        if (const auto* const entry = std::get_if<ForcedVersionItem>(&judged)) {
            ForcedVersion(localMachine, entry->valueName, entry->version);
        }
    }
}

Text ForcedVersionTable::Versions() {
    return u"Full=0;Demo=1;Lawyer=2;Browser=3;Classic=4;Client=5;NotInstalled=99;";
}

std::int32_t ForcedVersionTable::VersionInForce(std::optional<double> level) const {
    switch (IntegerFrom(level.value_or(0))) {
        case 1:
            return machineVersion_;
        case 2:
            return machineDefaultVersion_;
        case 3:
            return startVersion_;
        default:
            return versionInForce_;
    }
}

void ForcedVersionTable::Init() {
    versionInForce_ = Full;
    ResolveVersion();
}

// From the most general entry to the most particular; each one that applies replaces the result of those before. The
// current user's store comes last, and only its default entry counts.
void ForcedVersionTable::ResolveVersion() {
    const Text user = EnvironmentVariable(u"USERNAME");
    const Text domainUser = EnvironmentVariable(u"USERDOMAIN") + u"." + user;
    startVersion_ = versionInForce_;
    ForcedCheckOne(true, {});
    machineDefaultVersion_ = versionInForce_;
    ForcedCheckOne(true, user);
    ForcedCheckOne(true, EnvironmentVariable(u"USERDNSDOMAIN") + u"." + user);
    ForcedCheckOne(true, domainUser);
    machineVersion_ = versionInForce_;
    ForcedCheckOne(false, {});
    progOption_->CurrentUser(Text(VersionSection), u"User", NotGiven{}, domainUser);
}

void ForcedVersionTable::ForcedCheckOne(bool localMachine, const Text& regValue) {
    const std::int32_t forced = ForcedVersion(localMachine, regValue);
    if (forced >= 0 && ForcedVersionApplies(startVersion_, localMachine, forced)) {
        ForcedSet(forced);
    }
}
