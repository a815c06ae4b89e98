#include "platform/host/Unicode.h"

#include <algorithm>
#include <cwchar>
#include <locale>

#include "platform/Regional.h"

namespace platform::host {

namespace {

using Converter = std::codecvt<char16_t, char8_t, std::mbstate_t>;

const Converter& Utf8() {
    return std::use_facet<Converter>(std::locale::classic());
}

}  // namespace

std::u16string FromUtf8(std::string_view bytes) {
    std::u16string text(bytes.size(), u'\0');
    const auto* from = reinterpret_cast<const char8_t*>(bytes.data());
    const auto* const end = from + bytes.size();
    char16_t* to = text.data();
    while (from != end) {
        std::mbstate_t state{};
        Utf8().in(state, from, end, from, to, text.data() + text.size(), to);
        if (from != end) {
            *to++ = u'\uFFFD';
            ++from;
        }
    }
    text.resize(static_cast<std::size_t>(to - text.data()));
    return text;
}

std::string ToUtf8(std::u16string_view text) {
    constexpr std::size_t mostBytes = 3;  // to a unit: a pair of them takes four
    std::u8string bytes(text.size() * mostBytes, '\0');
    const char16_t* from = text.data();
    const char16_t* const end = from + text.size();
    char8_t* to = bytes.data();
    while (from != end) {
        std::mbstate_t state{};
        Utf8().out(state, from, end, from, to, bytes.data() + bytes.size(), to);
        if (from != end) {
            to = std::ranges::copy(std::u8string_view(u8"\uFFFD"), to).out;
            ++from;
        }
    }
    return {bytes.data(), to};
}

bool IsSameName(std::u16string_view one, std::u16string_view other) {
    return one.size() == other.size() && CharUpperW(std::u16string(one)) == CharUpperW(std::u16string(other));
}

}  // namespace platform::host
