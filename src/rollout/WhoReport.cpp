#include "rollout/WhoReport.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/Regional.h"
#include "version/ProductProfile.h"

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

// Returns the number of the step's entry, or a negative number if there is none.
std::int32_t ForcedVersionOf(const ResolutionStep& step, const CheckedTable& table, const Product& product) {
    if (!step.localMachine) {
        return ProfileOf(product).Table->ForcedVersion(false, step.valueName);
    }
    const ForcedVersionItem* const entry = table.Find(step.valueName);
    return entry == nullptr ? -1 : entry->version;
}

void AddProduct(const UserNames& user, const Product& product, const CheckedTable& table, ResolutionReport& report) {
    constexpr std::size_t versionWidth = 17;
    const auto steps = ResolutionSteps(user);
    std::size_t nameWidth = 0;
    for (const ResolutionStep& step : steps) {
        nameWidth = std::max(nameWidth, StepName(step).size() + 2);
    }
    report.lines.push_back(Text(product.section) + u" für " + user.name + u", Domäne »" + user.domain +
                           u"«, DNS-Domäne »" + user.dnsDomain + u"«");
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
        const std::int32_t forced = ForcedVersionOf(step, table, product);
        const EntryEffect effect = EffectOf(InitialVersion, step.localMachine, forced);
        if (effect == EntryEffect::Applies) {
            version = forced;
        }
        report.lines.push_back(name + (forced < 0 ? u"-"
                                                  : Padded(VersionText(forced, u"  "), versionWidth) +
                                                        Text(EffectTexts[static_cast<std::size_t>(effect)])));
        if (forced >= 0 && VersionName(forced).empty()) {
            report.findings.push_back(u"Warnung: " + DecimalText(forced) + u" ist keine Version der Versionsliste.");
        }
    }
    report.lines.push_back(u"  Version: " + VersionText(version, u" "));
}

}  // namespace

ResolutionReport DescribeResolution(const UserNames& user, const CheckedTables& tables) {
    ResolutionReport report;
    for (std::size_t product = 0; product < Products.size(); ++product) {
        AddProduct(user, Products[product], tables[product], report);
    }
    return report;
}
