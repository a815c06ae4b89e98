#include "platform/host/console/Dialog.h"

#include <algorithm>
#include <numeric>

#include "platform/host/Unicode.h"

namespace platform::host {

std::vector<std::size_t> ButtonsOf(const Dialog& dialog) {
    std::vector<std::size_t> buttons(dialog.controls.size());
    std::iota(buttons.begin(), buttons.end(), 0U);
    std::erase_if(buttons, [&](std::size_t it) { return dialog.controls[it].kind != ControlKind::Button; });
    return buttons;
}

std::string DisplayText(std::u16string text) {
    const auto isControl = [](char16_t it) { return (it < u' ' && it != u'\n') || (it >= 0x7F && it < 0xA0); };
    std::erase(text, u'\r');
    std::ranges::replace_if(text, isControl, u' ');
    return ToUtf8(text);
}

}  // namespace platform::host
