#include "platform/host/NameOrder.h"

#include <algorithm>
#include <cstdint>

#include "platform/Regional.h"

namespace platform::host {

char16_t Capital(char16_t character) {
    return CharUpperW({character}).front();
}

bool NameLess::operator()(std::u16string_view left, std::u16string_view right) const {
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char16_t one, char16_t other) { return Capital(one) < Capital(other); });
}

bool NameEqual::operator()(std::u16string_view left, std::u16string_view right) const {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char16_t one, char16_t other) { return one == other || Capital(one) == Capital(other); });
}

std::size_t NameHash::operator()(std::u16string_view name) const {
    std::uint64_t hash = 0xCBF29CE484222325U;  // FNV-1a: offset basis, and below its prime
    for (const char16_t character : name) {
        hash = (hash ^ Capital(character)) * 0x100000001B3U;
    }
    return static_cast<std::size_t>(hash ^ hash >> 32);
}

}  // namespace platform::host
