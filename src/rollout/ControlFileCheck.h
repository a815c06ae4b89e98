#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "common/Text.h"
#include "rollout/CheckedTable.h"

// Checks a control file and describes, in German, what an import would skip or silently accept.
class ControlFileCheck {
public:
    // Reads the whole file. Raises an error if the file can't be read, contains no product section, or can't be
    // imported; if a line is the cause, the description names the line. Findings up to the error remain available.
    void Read(const Text& path);

    // The tables after an import.
    [[nodiscard]] const CheckedTables& Tables() const { return tables_; }
    // One line per skipped item or warning.
    [[nodiscard]] const std::vector<Text>& Findings() const { return findings_; }
    // How many of the findings are items that an import would skip.
    [[nodiscard]] std::int32_t SkippedCount() const { return skippedCount_; }

private:
    enum class Encoding { Ascii, Utf8, Other };

    void CheckLine(const ControlFileReader& file);
    void CheckEncoding(const Text& line);
    void CheckHeading(const ControlFileReader& file);
    void CheckItems(const ControlFileReader& file, CheckedTable& table);
    void CheckEntry(std::int32_t line, const ForcedVersionItem& entry, CheckedTable& table);
    void CheckFile();
    void Warn(const Text& warning);
    void Warn(std::int32_t line, const Text& warning);

    CheckedTables tables_ = EmptyTables();
    std::array<bool, Products.size()> hasSection_{};
    Encoding encoding_ = Encoding::Ascii;
    std::vector<Text> findings_;
    std::int32_t skippedCount_ = 0;
};
