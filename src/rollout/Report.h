#pragma once

#include <cstdint>
#include <vector>

#include "common/Text.h"
#include "rollout/CheckedTable.h"

// The program's exit codes, which scripts rely on.
enum class RolloutResult { Success = 0, NeedsReview = 1, Failed = 2 };

// Prints a line to platform::StdOutputHandle or StdErrorHandle. Control characters are escaped, for example as "\x1B".
void PrintLine(std::int32_t stream, const Text& line);

// Returns the number of entries per product, such as "Tallora 3, Reporting 2".
Text EntryCounts(const CheckedTables& tables);

// Returns the warning for an entry that can't be read as a number. `label` is the entry's quoted name or position.
Text UnreadableEntryWarning(const CheckedTable& table, const Text& label);

// The findings of a run.
class Report {
public:
    // Prints each finding, prefixed with `subject`. `skippedCount` of them are skipped items; the rest are warnings.
    void AddFindings(const std::vector<Text>& findings, std::int32_t skippedCount = 0, const Text& subject = {});

    // Prints the summary line that ends every run: the number of entries in `tables`, the number of findings, and then
    // `more`. Returns NeedsReview if there were findings, otherwise Success.
    [[nodiscard]] RolloutResult Finish(const CheckedTables& tables, const Text& more = {}) const;

private:
    std::int32_t skippedCount_ = 0;
    std::int32_t warningCount_ = 0;
};
