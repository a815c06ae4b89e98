#include "platform/host/NameOrder.h"

#include <algorithm>
#include <cstdint>

namespace platform::host {

namespace {

bool Within(char16_t character, char16_t first, char16_t last) {
    return first <= character && character <= last;
}

// In Latin Extended-A and part of Cyrillic, capitals and small letters take turns.
char16_t EvenBefore(char16_t character) {
    return static_cast<char16_t>(character & ~1U);
}
char16_t OddBefore(char16_t character) {
    return static_cast<char16_t>((character & 1U) == 0 ? character - 1 : character);
}

char16_t LatinExtendedCapital(char16_t character) {
    if (character == 0x131) {  // the dotless i has no capital of its own
        return character;
    }
    if (Within(character, 0x100, 0x137) || Within(character, 0x14A, 0x177)) {
        return EvenBefore(character);
    }
    if (Within(character, 0x139, 0x148) || Within(character, 0x179, 0x17E)) {
        return OddBefore(character);
    }
    return character;
}

char16_t GreekCapital(char16_t character) {
    if (character == 0x3AC) {
        return 0x386;
    }
    if (Within(character, 0x3AD, 0x3AF)) {
        return static_cast<char16_t>(character - 0x25);
    }
    if (character == 0x3C2) {  // the sigma at a word's end
        return 0x3A3;
    }
    if (Within(character, 0x3B1, 0x3CB)) {
        return static_cast<char16_t>(character - 0x20);
    }
    if (character == 0x3CC) {
        return 0x38C;
    }
    return Within(character, 0x3CD, 0x3CE) ? static_cast<char16_t>(character - 0x3F) : character;
}

char16_t CyrillicCapital(char16_t character) {
    if (Within(character, 0x430, 0x44F)) {
        return static_cast<char16_t>(character - 0x20);
    }
    if (Within(character, 0x450, 0x45F)) {
        return static_cast<char16_t>(character - 0x50);
    }
    if (Within(character, 0x460, 0x481) || Within(character, 0x48A, 0x4BF) || Within(character, 0x4D0, 0x52F)) {
        return EvenBefore(character);
    }
    if (Within(character, 0x4C1, 0x4CE)) {
        return OddBefore(character);
    }
    return character == 0x4CF ? static_cast<char16_t>(0x4C0) : character;
}

}  // namespace

char16_t Capital(char16_t character) {
    if (character < 0x80) {
        return Within(character, u'a', u'z') ? static_cast<char16_t>(character - 0x20) : character;
    }
    if (character == 0xFF) {
        return 0x178;
    }
    if (Within(character, 0xE0, 0xFE) && character != 0xF7) {
        return static_cast<char16_t>(character - 0x20);
    }
    if (Within(character, 0x100, 0x17F)) {
        return LatinExtendedCapital(character);
    }
    if (Within(character, 0x370, 0x3FF)) {
        return GreekCapital(character);
    }
    return Within(character, 0x400, 0x52F) ? CyrillicCapital(character) : character;
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
