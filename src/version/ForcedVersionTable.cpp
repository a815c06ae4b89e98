#include "version/ForcedVersionTable.h"

#include <variant>

#include "common/Conversion.h"
#include "common/Error.h"
#include "platform/ScopeExit.h"
#include "version/ControlFile.h"
#include "version/VersionResolution.h"

namespace {

constexpr char16_t TableSection[] = u"Version\\ForcedVersion";

platform::Handle RootOf(bool localMachine) {
    return localMachine ? platform::KeyLocalMachine : platform::KeyCurrentUser;
}

}  // namespace

Text VersionName(std::int32_t version) {
    for (const Text& item : Split(ForcedVersionTable::Versions(), u';')) {
        const auto parsed = ParseItem(item);
        const auto* const entry = std::get_if<ForcedVersionItem>(&parsed);
        if (entry != nullptr && entry->version == version) {
            return entry->valueName;
        }
    }
    return {};
}

Text ForcedVersionTable::VersionSectionKey() const {
    return progOption_->SectionRoot() + u"\\" + VersionSection;
}

std::int32_t ForcedVersionTable::ForcedVersion(bool localMachine, const Text& regValue) const {
    const Text section = TableSection;
    const Variant stored =
        localMachine ? progOption_->LocalMachine(section, regValue) : progOption_->CurrentUser(section, regValue);
    if (std::holds_alternative<Empty>(stored) || !IsNumeric(stored)) {
        return -1;
    }
    return LongFrom(stored);
}

void ForcedVersionTable::ForcedVersion(bool localMachine, const Text& regValue, std::int32_t forcedVersion) {
    const Text section = TableSection;
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
    IgnoreErrors([&] { registry.KeyOpen(RootOf(localMachine), VersionSectionKey()); },
                 [&] { registry.SubKeyDelete(TableKey); }, [&] { registry.KeyClose(); });
}

Text ForcedVersionTable::ForcedVersionAll(bool localMachine) const {
    Text items;
    Registry registry;
    const platform::ScopeExit close([&] { registry.KeyClose(); });
    TrapError([&] {
        registry.KeyOpen(RootOf(localMachine), VersionSectionKey() + u"\\" + TableKey);
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
        const auto parsed = ParseItem(item);
        if (const auto* const entry = std::get_if<ForcedVersionItem>(&parsed)) {
            ForcedVersion(localMachine, entry->valueName, entry->version);
        }
    }
}

Text ForcedVersionTable::Versions() {
    return u"Full=0;Demo=1;Lawyer=2;Browser=3;Classic=4;Client=5;NotInstalled=99;";
}

std::int32_t ForcedVersionTable::VersionInForce(std::optional<double> level) const {
    const auto index = static_cast<std::size_t>(IntegerFrom(level.value_or(0)));
    return versions_[index < versions_.size() ? index : 0];
}

void ForcedVersionTable::Init() {
    versions_.fill(InitialVersion);
    ResolveVersion();
}

void ForcedVersionTable::ResolveVersion() {
    const UserNames user = CurrentUserNames();
    for (const ResolutionStep& step : ResolutionSteps(user)) {
        ForcedCheckOne(step.localMachine, step.valueName);
        versions_[static_cast<std::size_t>(step.level)] = versions_[0];
    }
    progOption_->CurrentUser(VersionSection, u"User", NotGiven{}, user.InDomain());
}

void ForcedVersionTable::ForcedCheckOne(bool localMachine, const Text& regValue) {
    const std::int32_t forced = ForcedVersion(localMachine, regValue);
    if (EffectOf(versions_[StartLevel], localMachine, forced) == EntryEffect::Applies) {
        ForcedSet(forced);
    }
}
