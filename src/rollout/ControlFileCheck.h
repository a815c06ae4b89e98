#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "common/Text.h"
#include "version/ControlFileReader.h"
#include "version/ForcedVersionItem.h"
#include "version/ProductProfileMain.h"
#include "version/ProductProfileReporting.h"

// The entries that an import would set in one product's table, in the file's order.
class CheckedTable {
public:
    CheckedTable(TextView section, TextView registryPath) : section_(section), registryPath_(registryPath) {}

    [[nodiscard]] TextView Section() const { return section_; }
    // The table's key below HKEY_LOCAL_MACHINE, as a 32-bit program sees it.
    [[nodiscard]] Text Key() const;
    [[nodiscard]] const std::vector<ForcedVersionItem>& Entries() const { return entries_; }

    // True when the file has the table's section.
    [[nodiscard]] bool IsThere() const { return isThere_; }
    void Enter() { isThere_ = true; }

    // Adds an entry, and gives the line in which its name stood before, 0 for a new name. Names that differ only in
    // letter case are one.
    std::int32_t Add(const ForcedVersionItem& entry, std::int32_t line);

private:
    TextView section_;
    TextView registryPath_;
    bool isThere_ = false;
    std::vector<ForcedVersionItem> entries_;
    std::unordered_map<Text, std::int32_t> lines_;
};

// Reads a control file as an import does, and tells in German what an import would pass over or take in silence.
class ControlFileCheck {
public:
    // Reads the file whole. Raises the error of a file that cannot be read, and of a line at which an import would
    // break off; the description says which. What was found until then stays.
    void Read(const Text& path);

    [[nodiscard]] const CheckedTable& Main() const { return main_; }
    [[nodiscard]] const CheckedTable& Reporting() const { return reporting_; }
    // A line each, in the file's order.
    [[nodiscard]] const std::vector<Text>& Findings() const { return findings_; }
    // True when an import would pass over a line of one of the two sections, or a part of it.
    [[nodiscard]] bool HasPassedOver() const { return hasPassedOver_; }

private:
    enum class Encoding { Ascii, Utf8, CodePage };

    void CheckLine(const ControlFileReader& file);
    void CheckEncoding(const ControlFileReader& file);
    void CheckHead(const ControlFileReader& file);
    void CheckItems(const ControlFileReader& file, CheckedTable& table);
    void CheckEntry(std::int32_t line, const ForcedVersionItem& entry, CheckedTable& table);
    void Warn(std::int32_t line, const Text& warning);

    CheckedTable main_{MainSection, MainRegistryPath};
    CheckedTable reporting_{ReportingSection, ReportingRegistryPath};
    Encoding encoding_ = Encoding::Ascii;
    std::vector<Text> findings_;
    bool hasPassedOver_ = false;
};
