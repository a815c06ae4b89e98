#include "platform/host/console/ActiveWindow.h"
#include "platform/host/console/Dialog.h"

namespace platform {

namespace {

using host::Dialog;
using host::DialogControl;

constexpr std::uint32_t ButtonsMask = 0x0F;
constexpr std::uint32_t IconMask = 0xF0;

constexpr Colour White = 0xFFFFFF;
constexpr Colour Black = 0x000000;
constexpr Colour Red = 0x0000FF;
constexpr Colour Yellow = 0x00FFFF;
constexpr Colour Blue = 0xFF0000;

struct Button {
    const char16_t* caption;
    std::int32_t answer;
};

std::vector<Button> ButtonsOfType(std::uint32_t type) {
    if ((type & ButtonsMask) == ButtonsYesNoCancel) {
        return {{u"Ja", AnswerYes}, {u"Nein", AnswerNo}, {u"Abbrechen", AnswerCancel}};
    }
    return {{u"OK", AnswerOk}};
}

// The icon as a word on its colour.
DialogControl IconOfType(std::uint32_t type) {
    const auto icon = [](const char16_t* word, Colour background, Colour text) {
        return DialogControl{{ControlKind::Label, word, {}}, {}, background, text};
    };
    switch (type & IconMask) {
        case IconCritical:
            return icon(u"Fehler", Red, White);
        case IconQuestion:
            return icon(u"Frage", Blue, White);
        case IconExclamation:
            return icon(u"Warnung", Yellow, Black);
        default:
            return icon(u"Hinweis", Blue, White);
    }
}

}  // namespace

std::int32_t MessageBoxW(const std::u16string& text, const std::u16string& caption, std::uint32_t type) {
    const std::vector<Button> buttons = ButtonsOfType(type);
    Dialog dialog{caption, {}, false, {IconOfType(type), {{ControlKind::Label, text, {}}}}};
    const std::size_t firstButton = dialog.controls.size();
    for (const Button& button : buttons) {
        dialog.controls.push_back({{ControlKind::Button, button.caption, {}}});
    }
    const Handle owner = host::ActiveWindow();
    const host::Act act = host::DialogShow(dialog)->Next();
    host::WindowActivate(owner);
    // The close box stands for Cancel, or for the one button.
    return act.kind == host::Act::Kind::Click ? buttons.at(act.control - firstButton).answer : buttons.back().answer;
}

}  // namespace platform
