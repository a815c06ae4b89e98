#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <variant>

#include "common/Text.h"
#include "common/TextFile.h"
#include "version/Product.h"

// The format of the control file: a text file with one section per product. Each line of a section is an item
// "name=number", or several items separated by ";".

// An entry of a forced version table.
struct ForcedVersionItem {
    Text valueName;  // the name of the registry value; empty for the default entry, whose item name is "(Standard)"
    std::int32_t version;
};

// Why ParseItem rejects an item. If several reasons apply, ParseItem returns the first one listed here.
enum class ItemError { MissingEquals, MultipleEquals, NotANumber, NegativeNumber };

// Parses an item of the form "name=number". Raises 6 (overflow) if the number exceeds 32 bits.
std::variant<ForcedVersionItem, ItemError> ParseItem(const Text& item);

// Converts between the name of a registry value and the name of its item. They differ only for the default entry.
Text ItemNameOf(const Text& valueName);
Text ValueNameOf(const Text& itemName);

// Returns the index in Products of the product with this section, if any. The comparison is case-sensitive.
std::optional<std::size_t> ProductIndex(const Text& section);

// Reads a control file line by line.
class ControlFileReader {
public:
    // Raises a file error if the file can't be opened.
    explicit ControlFileReader(const Text& path) : file_(path) {}

    // Reads the next non-empty line. Returns false at the end of the file. Raises a file error if the file can't be
    // read, and 6 (overflow) if the line is longer than 32767 characters.
    bool NextLine();

    // The 1-based number of the current line.
    [[nodiscard]] std::int32_t Number() const { return number_; }
    // The current line without leading and trailing spaces; tabs remain.
    [[nodiscard]] const Text& Line() const { return line_; }
    // True if the current line starts a section.
    [[nodiscard]] bool IsHeading() const { return isHeading_; }
    // The current line's section, empty before the first heading. A section's name is its heading without the first and
    // last characters, whatever they are.
    [[nodiscard]] const Text& Section() const { return section_; }

private:
    TextFileReader file_;
    std::int32_t number_ = 0;
    Text line_;
    bool isHeading_ = false;
    Text section_;
};

// One item string per product, in the order of Products.
using TableItems = std::array<Text, Products.size()>;

// Returns the items of all products' sections. Raises the same errors as ControlFileReader.
TableItems ReadControlFile(const Text& path);

// Writes a control file with these items. On failure raises a file error and usually leaves an existing file unchanged
// (see WriteTextFile).
void WriteControlFile(const Text& path, const TableItems& tables);
