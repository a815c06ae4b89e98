#include "rollout/StoredTables.h"

#include <optional>

#include "common/Conversion.h"
#include "common/Error.h"
#include "platform/ScopeExit.h"
#include "rollout/Report.h"
#include "settings/Registry.h"
#include "version/modVTV4Version.h"

namespace {

// If an enumeration step fails, the entry's name is unknown. Unless the entry is merely too long, the enumeration ends.
void ReadTable(CheckedTable& table, std::vector<Text>& findings) {
    Registry registry;
    const platform::ScopeExit close([&] { registry.KeyClose(); });
    registry.KeyOpenLocalMachine(table.Key());
    for (std::int32_t position = 1;; ++position) {
        const std::optional<Error> failedStep = TrapError([&] { registry.ValueNameNext(); });
        if (failedStep && failedStep->number != platform::StatusMoreData) {
            Raise(*failedStep);
        }
        if (!failedStep && registry.EOF_ValueName()) {
            return;
        }
        const Text name = registry.ValueName();
        if (failedStep || TrapError([&] { table.Add({name, LongFrom(registry.Value(name))}); })) {
            const Text label = failedStep ? u"Nr. " + DecimalText(position) : u"»" + ItemNameOf(name) + u"«";
            findings.push_back(UnreadableEntryWarning(table, label));
        }
    }
}

}  // namespace

StoredTables ReadStoredTables() {
    StoredTables stored;
    for (CheckedTable& table : stored.tables) {
        const std::optional<Error> error = TrapError([&] { ReadTable(table, stored.findings); });
        if (error && error->number != platform::StatusFileNotFound) {
            Raise(error->number, u"HKEY_LOCAL_MACHINE\\" + table.Key() + u": " + FailureText({error->number, {}}));
        }
    }
    return stored;
}
