#include "rollout/HexText.h"

Text HexText(std::uint32_t number) {
    constexpr TextView digits = u"0123456789ABCDEF";
    Text text;
    for (int shift = 28; shift >= 0; shift -= 4) {
        text += digits[(number >> shift) & 0xF];
    }
    return text;
}
