#include "version/ForcedVersionItem.h"

#include <vector>

#include "common/Conversion.h"

namespace {

constexpr TextView DefaultItemName = u"(Standard)";

}  // namespace

std::variant<ForcedVersionItem, ItemFault> JudgeItem(const Text& piece) {
    const std::vector<Text> parts = Split(piece, u'=');
    if (parts.size() != 2) {
        return parts.size() < 2 ? ItemFault::NoEquals : ItemFault::SeveralEquals;
    }
    if (!IsNumeric(parts[1])) {
        return ItemFault::NoNumber;
    }
    const std::int32_t version = LongFrom(parts[1]);
    if (version < 0) {
        return ItemFault::NegativeNumber;
    }
    return ForcedVersionItem{ValueNameOf(parts[0]), version};
}

Text ItemNameOf(const Text& name) {
    return name.empty() ? Text(DefaultItemName) : name;
}

Text ValueNameOf(const Text& name) {
    return name == DefaultItemName ? Text() : name;
}
