#include "version/ControlFile.h"

#include <vector>

#include "common/Conversion.h"
#include "common/Environment.h"
#include "common/modStringLibrary.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "version/ForcedVersionTable.h"

namespace {

constexpr TextView DefaultItemName = u"(Standard)";

void AppendLine(Text& file, const Text& line) {
    file += line + u"\r\n";
}

// Appends one line per item. An item string ends with ";", so the empty piece after it becomes an empty line.
void AppendItems(Text& file, const Text& items) {
    for (const Text& item : Split(items, u';')) {
        AppendLine(file, item);
    }
}

}  // namespace

std::variant<ForcedVersionItem, ItemError> ParseItem(const Text& item) {
    const std::vector<Text> parts = Split(item, u'=');
    if (parts.size() != 2) {
        return parts.size() < 2 ? ItemError::MissingEquals : ItemError::MultipleEquals;
    }
    if (!IsNumeric(parts[1])) {
        return ItemError::NotANumber;
    }
    const std::int32_t version = LongFrom(parts[1]);
    if (version < 0) {
        return ItemError::NegativeNumber;
    }
    return ForcedVersionItem{ValueNameOf(parts[0]), version};
}

Text ItemNameOf(const Text& valueName) {
    return valueName.empty() ? Text(DefaultItemName) : valueName;
}

Text ValueNameOf(const Text& itemName) {
    return itemName == DefaultItemName ? Text() : itemName;
}

std::optional<std::size_t> ProductIndex(const Text& section) {
    for (std::size_t product = 0; product < Products.size(); ++product) {
        if (section == Products[product].section) {
            return product;
        }
    }
    return {};
}

bool ControlFileReader::NextLine() {
    do {
        if (file_.AtEnd()) {
            return false;
        }
        line_ = Trim(file_.ReadLine());
        ++number_;
    } while (line_.empty());
    isHeading_ = MidFixed(line_, 1, 1) == u"[";
    if (isHeading_) {
        section_ = MidFixed(line_, 2, static_cast<std::int16_t>(static_cast<int>(line_.size()) - 2));
    }
    return true;
}

TableItems ReadControlFile(const Text& path) {
    TableItems tables;
    ControlFileReader file(path);
    while (file.NextLine()) {
        const std::optional<std::size_t> product = ProductIndex(file.Section());
        if (product && !file.IsHeading()) {
            tables[*product] += file.Line() + u";";
        }
    }
    return tables;
}

void WriteControlFile(const Text& path, const TableItems& tables) {
    Text file;
    AppendLine(file, u"[Info]");
    AppendLine(file, u"File=" + path);
    AppendLine(file, u"User=" + EnvironmentVariable(u"USERNAME"));
    AppendLine(file, u"TimeStamp=" + platform::VarBstrFromDate(platform::Now()));
    AppendLine(file, {});
    AppendLine(file, u"[Versions]");
    AppendItems(file, ForcedVersionTable::Versions());
    for (std::size_t product = 0; product < Products.size(); ++product) {
        AppendLine(file, u"[" + Text(Products[product].section) + u"]");
        AppendItems(file, tables[product]);
    }
    AppendLine(file, {});
    AppendLine(file, u"[End]");
    WriteTextFile(path, file, true);
}
