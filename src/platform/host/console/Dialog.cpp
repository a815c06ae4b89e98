#include "platform/host/console/Dialog.h"

#include <algorithm>

#include "platform/host/Unicode.h"

namespace platform::host {

namespace {

bool IsControlCharacter(char16_t character) {
    return (character < u' ' && character != u'\n') || (character >= 0x7F && character < 0xA0);
}

}  // namespace

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
    std::erase(text, u'\r');
    std::ranges::replace_if(text, IsControlCharacter, u' ');
    return ToUtf8(text);
}

}  // namespace platform::host
