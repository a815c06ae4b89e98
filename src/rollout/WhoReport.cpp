#include "rollout/WhoReport.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "common/Conversion.h"
#include "common/Error.h"
#include "platform/Regional.h"
#include "rollout/Report.h"
#include "settings/Registry.h"
#include "version/ForcedVersionTable.h"

namespace {

Text Padded(const Text& text, std::size_t width) {
    return text + Text(width - std::min(width, text.size()), u' ');
}

Text VersionText(std::int32_t version, TextView separator) {
    const Text name = VersionName(version);
    return DecimalText(version) + Text(separator) + (name.empty() ? u"(unbekannt)" : name);
}

// Indexed by EntryEffect.
constexpr std::array<TextView, 4> EffectTexts = {u"", u"gilt",
                                                 u"gilt nicht: Die Version der Installation lässt ihn nicht zu",
                                                 u"gilt nicht: Full zählt nur in der Tabelle des Rechners"};

Text StepName(const ResolutionStep& step) {
    return (step.localMachine ? u"" : u"Benutzer: ") + ItemNameOf(step.valueName);
}

// Returns the number stored in the step's registry entry, or a negative number if there is no usable entry.
std::int32_t StoredVersion(const ResolutionStep& step, const CheckedTable& table, std::vector<Text>& findings) {
    const Text label = u"»" + StepName(step) + u"«";
    Variant stored = Null{};
    std::int32_t version = -1;
    Registry registry;
    const std::optional<Error> unreadable = TrapError([&] {
        step.localMachine ? registry.KeyOpenLocalMachine(table.Key()) : registry.KeyOpenCurrentUser(table.Key());
        stored = registry.Value(step.valueName);
    });
    registry.KeyClose();
    if (unreadable && unreadable->number == platform::StatusFileNotFound) {
        return version;
    }
    if (!IsNumeric(stored)) {
        findings.push_back(UnreadableEntryWarning(table, label));
    } else if (const std::optional<Error> overflow = TrapError([&] { version = LongFrom(stored); })) {
        Raise(overflow->number, label + u" der Tabelle [" + table.Section() + u"]: " + overflow->description + u".");
    } else if (version >= 0 && VersionName(version).empty()) {
        findings.push_back(u"Warnung: " + DecimalText(version) + u" ist keine Version der Versionsliste.");
    }
    return version;
}

void AddProduct(const UserNames& user, const CheckedTable& table, bool isTrial, ResolutionReport& report) {
    constexpr std::size_t versionWidth = 17;
    const auto steps = ResolutionSteps(user);
    std::size_t nameWidth = 0;
    for (const ResolutionStep& step : steps) {
        nameWidth = std::max(nameWidth, StepName(step).size() + 2);
    }
    report.lines.push_back(table.Section() + u" für " + user.name + u", Domäne »" + user.domain + u"«, DNS-Domäne »" +
                           user.dnsDomain + u"«");
    // The current user's store belongs to this user only if this user runs the program.
    const bool runsProgram =
        platform::CharUpperW(user.InDomain()) == platform::CharUpperW(CurrentUserNames().InDomain());
    std::int32_t version = InitialVersion;
    for (const ResolutionStep& step : steps) {
        const Text name = u"  " + Padded(StepName(step), nameWidth);
        if (!step.localMachine && !runsProgram) {
            report.lines.push_back(name + u"nicht geprüft: Dazu muss der Benutzer den Befehl selbst ausführen");
            continue;
        }
        const std::int32_t forced =
            isTrial && step.localMachine ? table.NumberOf(step.valueName) : StoredVersion(step, table, report.findings);
        const EntryEffect effect = EffectOf(InitialVersion, step.localMachine, forced);
        if (effect == EntryEffect::Applies) {
            version = forced;
        }
        report.lines.push_back(name + (forced < 0 ? u"-"
                                                  : Padded(VersionText(forced, u"  "), versionWidth) +
                                                        Text(EffectTexts[static_cast<std::size_t>(effect)])));
    }
    report.lines.push_back(u"  Version: " + VersionText(version, u" "));
}

}  // namespace

ResolutionReport DescribeResolution(const UserNames& user, const CheckedTables* trial) {
    ResolutionReport report;
    for (const CheckedTable& table : trial != nullptr ? *trial : EmptyTables()) {
        AddProduct(user, table, trial != nullptr, report);
    }
    return report;
}
