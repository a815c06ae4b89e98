#include "platform/host/console/Dialog.h"

#include <algorithm>

#include "platform/host/Unicode.h"

namespace platform::host {

std::vector<std::size_t> ButtonsOf(const Dialog& dialog) {
    std::vector<std::size_t> buttons;
    for (std::size_t control = 0; control < dialog.controls.size(); ++control) {
        if (dialog.controls[control].kind == ControlKind::Button) {
            buttons.push_back(control);
        }
    }
    return buttons;
}

std::string DisplayText(std::u16string text) {
    const auto isControl = [](char16_t it) { return (it < u' ' && it != u'\n') || (it >= 0x7F && it < 0xA0); };
    std::erase(text, u'\r');
    std::ranges::replace_if(text, isControl, u' ');
    return ToUtf8(text);
}

}  // namespace platform::host
