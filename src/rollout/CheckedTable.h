#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "common/Text.h"
#include "version/ControlFile.h"
#include "version/Product.h"

// The entries of one product's table, from a control file or the registry. As in the registry, names are
// case-insensitive; an entry keeps its first spelling and position and takes the last number.
class CheckedTable {
public:
    explicit CheckedTable(const Product& product) : product_(product) {}

    [[nodiscard]] Text Section() const { return Text(product_.section); }
    // The path of the table's key below HKEY_LOCAL_MACHINE, as a 32-bit program sees it.
    [[nodiscard]] Text Key() const;
    [[nodiscard]] const std::vector<ForcedVersionItem>& Entries() const { return entries_; }

    // Adds an entry. If the name already exists, changes the number in the existing entry and returns the line of the
    // previous occurrence.
    std::optional<std::int32_t> Add(const ForcedVersionItem& entry, std::int32_t line = 0);

    // Returns the number stored in the entry, or -1 if the entry is missing.
    [[nodiscard]] std::int32_t NumberOf(const Text& valueName) const;

private:
    struct Occurrence {
        std::size_t index;  // index in entries_
        std::int32_t line;  // line number of the last occurrence
    };

    Product product_;
    std::vector<ForcedVersionItem> entries_;
    std::map<Text, Occurrence> occurrences_;  // keyed by uppercase name
};

// One table per product, in the order of Products.
using CheckedTables = std::vector<CheckedTable>;

// Returns an empty table for each product.
CheckedTables EmptyTables();

// Returns the entries of `tables` whose names `others` doesn't contain.
CheckedTables EntriesOnlyIn(const CheckedTables& tables, const CheckedTables& others);
