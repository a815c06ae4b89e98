#include "rollout/CheckedTable.h"

#include <utility>

#include "platform/Regional.h"
#include "version/ForcedVersionTable.h"

Text CheckedTable::Key() const {
    return Text(product_.registryPath) + u"\\" + VersionSection + u"\\" + TableKey;
}

std::optional<std::int32_t> CheckedTable::Add(const ForcedVersionItem& entry, std::int32_t line) {
    const auto [found, isNew] =
        occurrences_.try_emplace(platform::CharUpperW(entry.valueName), Occurrence{entries_.size(), line});
    if (isNew) {
        entries_.push_back(entry);
        return {};
    }
    entries_[found->second.index].version = entry.version;
    return std::exchange(found->second.line, line);
}

std::int32_t CheckedTable::NumberOf(const Text& valueName) const {
    const auto found = occurrences_.find(platform::CharUpperW(valueName));
    return found == occurrences_.end() ? -1 : entries_[found->second.index].version;
}

CheckedTables EmptyTables() {
    return {Products.begin(), Products.end()};
}

CheckedTables EntriesOnlyIn(const CheckedTables& tables, const CheckedTables& others) {
    CheckedTables result = EmptyTables();
    for (std::size_t product = 0; product < tables.size(); ++product) {
        for (const ForcedVersionItem& entry : tables[product].Entries()) {
            if (others[product].NumberOf(entry.valueName) < 0) {
                result[product].Add(entry);
            }
        }
    }
    return result;
}
