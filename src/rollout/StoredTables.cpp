#include "rollout/StoredTables.h"

#include <optional>

#include "common/Conversion.h"
#include "common/Error.h"
#include "settings/Registry.h"
#include "version/modVTV4Version.h"

namespace {

// After a failed enumeration step, the name is unknown, and only an entry that is too long doesn't end the enumeration.
void ReadTable(CheckedTable& table, std::vector<Text>& findings) {
    Registry registry;
    const KeyCloser closer(registry);
    registry.KeyOpenLocalMachine(table.Key());
    for (std::int32_t position = 1;; ++position) {
        const std::optional<Error> error = TrapError([&] {
            position == 1 ? registry.ValueNameFirst() : registry.ValueNameNext();
            if (!registry.EOF_ValueName()) {
                table.Add({registry.ValueName(), LongFrom(registry.Value(registry.ValueName()))});
            }
        });
        const bool hasName = !registry.EOF_ValueName();
        if (!hasName && error && error->number != platform::StatusMoreData) {
            Raise(*error);
        }
        if (!hasName && !error) {
            return;
        }
        if (error) {
            const Text label =
                hasName ? u"»" + ItemNameOf(registry.ValueName()) + u"«" : u"Nr. " + DecimalText(position);
            findings.push_back(u"Warnung: Der Eintrag " + label + u" der Tabelle [" + table.Section() +
                               u"] ist nicht als Zahl lesbar.");
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
