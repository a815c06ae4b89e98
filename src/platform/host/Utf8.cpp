#include "platform/host/Utf8.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace platform::host {

namespace {

bool LeadsPair(std::u16string_view text, std::size_t at) {
    return (text[at] & 0xFC00) == 0xD800 && at + 1 < text.size() && (text[at + 1] & 0xFC00) == 0xDC00;
}

void AppendUtf8(std::string& bytes, std::uint32_t character) {
    const auto append = [&bytes](std::uint32_t byte) { bytes += static_cast<char>(byte); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0 | character >> 6);
        append(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        append(0xE0 | character >> 12);
        append(0x80 | (character >> 6 & 0x3F));
        append(0x80 | (character & 0x3F));
    } else {
        append(0xF0 | character >> 18);
        append(0x80 | (character >> 12 & 0x3F));
        append(0x80 | (character >> 6 & 0x3F));
        append(0x80 | (character & 0x3F));
    }
}

void AppendText(std::u16string& text, std::uint32_t character) {
    if (character < 0x10000) {
        text += static_cast<char16_t>(character);
    } else {
        text += static_cast<char16_t>(0xD7C0 + (character >> 10));
        text += static_cast<char16_t>(0xDC00 | (character & 0x3FF));
    }
}

// The number of bytes of the character that `lead` begins, 0 when none begins so.
std::size_t Length(std::uint8_t lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

}  // namespace

std::string Utf8FromText(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::uint32_t character = text[at];
        if (LeadsPair(text, at)) {
            ++at;
            character = 0x10000 + ((character & 0x3FF) << 10) + (text[at] & 0x3FFU);
        }
        AppendUtf8(bytes, character);
    }
    return bytes;
}

std::optional<std::u16string> TextFromUtf8(std::string_view bytes) {
    constexpr std::array<std::uint32_t, 5> leadBits = {0, 0x7F, 0x1F, 0x0F, 0x07};
    constexpr std::array<std::uint32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    std::u16string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const auto lead = static_cast<std::uint8_t>(bytes[at]);
        const std::size_t length = Length(lead);
        if (length == 0 || length > bytes.size() - at) {
            return {};
        }
        std::uint32_t character = lead & leadBits[length];
        for (const char next : bytes.substr(at + 1, length - 1)) {
            if ((next & 0xC0) != 0x80) {
                return {};
            }
            character = character << 6 | (static_cast<std::uint8_t>(next) & 0x3F);
        }
        if (character < smallest[length] || character > 0x10FFFF) {
            return {};
        }
        AppendText(text, character);
        at += length;
    }
    return text;
}

}  // namespace platform::host
