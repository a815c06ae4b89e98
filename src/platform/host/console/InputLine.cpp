#include "platform/host/console/InputLine.h"

#include <algorithm>
#include <cstdint>

namespace platform::host {

namespace {

using Captions = std::vector<std::optional<std::u16string>>;

std::optional<std::size_t> ButtonByCaption(const std::u16string& line, const Captions& captions) {
    const auto found = std::find(captions.begin(), captions.end(), line);
    return found == captions.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - captions.begin()));
}

// A number of one to five digits, as one writes it: a window of more twips has no use.
std::optional<std::int32_t> Number(const std::u16string& digits) {
    if (digits.empty() || digits.size() > 5 || digits.front() == u'0' ||
        digits.find_first_not_of(u"0123456789") != std::u16string::npos) {
        return std::nullopt;
    }
    std::int32_t number = 0;
    for (const char16_t digit : digits) {
        number = number * 10 + (digit - u'0');
    }
    return number;
}

std::optional<std::size_t> ButtonByNumber(const std::u16string& line, const Captions& captions) {
    const std::optional<std::int32_t> number = Number(line);
    if (!number || *number < 1 || static_cast<std::size_t>(*number) > captions.size()) {
        return std::nullopt;
    }
    const auto button = static_cast<std::size_t>(*number - 1);
    return captions[button] ? std::optional(button) : std::nullopt;
}

std::optional<Size> OuterSize(const std::u16string& line) {
    const std::size_t by = line.find(u'x');
    if (by == std::u16string::npos) {
        return std::nullopt;
    }
    const std::optional<std::int32_t> width = Number(line.substr(0, by));
    const std::optional<std::int32_t> height = Number(line.substr(by + 1));
    return width && height ? std::optional(Size{*width, *height}) : std::nullopt;
}

}  // namespace

Input InputMeaning(const std::optional<std::u16string>& line, const Captions& captions, bool sizable) {
    if (!line) {
        return CloseInput{};
    }
    if (const auto button = ButtonByCaption(*line, captions)) {
        return ClickInput{*button};
    }
    if (const auto button = ButtonByNumber(*line, captions)) {
        return ClickInput{*button};
    }
    if (*line == u"?") {
        return ToolTipsInput{};
    }
    if (*line == u"x") {
        return CloseInput{};
    }
    if (const auto size = OuterSize(*line); size && sizable) {
        return SizeInput{*size};
    }
    return UnknownInput{};
}

}  // namespace platform::host
