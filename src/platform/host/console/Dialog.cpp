#include "platform/host/console/Dialog.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "platform/host/Unicode.h"
#include "platform/host/console/LineView.h"
#include "platform/host/console/NewtView.h"

namespace platform::host {

namespace {

bool IsControlCharacter(char16_t character) {
    return (character < u' ' && character != u'\n') || (character >= 0x7F && character < 0xA0);
}

}  // namespace

std::vector<std::size_t> ButtonsOf(const Dialog& dialog) {
    std::vector<std::size_t> buttons;
    for (std::size_t control = 0; control < dialog.controls.size(); ++control) {
        if (dialog.controls[control].design.kind == ControlKind::Button) {
            buttons.push_back(control);
        }
    }
    return buttons;
}

std::unique_ptr<DialogView> DialogShow(const Dialog& dialog) {
    std::unique_ptr<DialogView> view = NewtShow(dialog);
    return view != nullptr ? std::move(view) : std::make_unique<LineView>(dialog);
}

bool HasTerminal() {
    struct stat input {};
    struct stat output {};
    return isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1 && fstat(STDIN_FILENO, &input) == 0 &&
           fstat(STDOUT_FILENO, &output) == 0 && input.st_rdev == output.st_rdev;
}

std::string ShownText(std::u16string text) {
    std::erase(text, u'\r');
    std::ranges::replace_if(text, IsControlCharacter, u' ');
    return ToUtf8(text);
}

}  // namespace platform::host
