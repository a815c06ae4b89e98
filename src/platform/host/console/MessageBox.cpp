#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "platform/WindowSystem.h"
#include "platform/host/console/Console.h"
#include "platform/host/console/InputLine.h"
#include "platform/host/console/Painting.h"
#include "platform/host/console/TextLayout.h"
#include "platform/host/console/WindowTable.h"

namespace platform {

namespace {

using host::Canvas;
using host::TextScreen;

struct Button {
    std::u16string caption;
    std::int32_t answer;
};

constexpr std::uint32_t ButtonsMask = 0x0F;
constexpr std::uint32_t IconMask = 0xF0;

std::vector<Button> ButtonsOfType(std::uint32_t type) {
    if ((type & ButtonsMask) == ButtonsYesNoCancel) {
        return {{u"Ja", AnswerYes}, {u"Nein", AnswerNo}, {u"Abbrechen", AnswerCancel}};
    }
    return {{u"OK", AnswerOk}};
}

std::vector<std::optional<std::u16string>> Captions(const std::vector<Button>& buttons) {
    std::vector<std::optional<std::u16string>> captions;
    captions.reserve(buttons.size());
    for (const Button& button : buttons) {
        captions.emplace_back(button.caption);
    }
    return captions;
}

std::pair<std::u32string, Colour> IconOfType(std::uint32_t type) {
    switch (type & IconMask) {
        case IconCritical:
            return {U"✖", host::RedText};
        case IconQuestion:
            return {U"?", host::BlueText};
        case IconExclamation:
            return {U"⚠", host::OrangeText};
        case IconInformation:
            return {U"ⓘ", host::BlueText};
        default:
            return {U" ", host::BlueText};
    }
}

// The buttons stand in one row, parted by two columns; the first one has the focus.
int ButtonRowColumns(const std::vector<Button>& buttons) {
    int columns = -2;
    for (std::size_t button = 0; button < buttons.size(); ++button) {
        columns += host::ButtonColumns(host::ButtonText(button + 1, buttons[button].caption)) + 2;
    }
    return columns;
}

void PaintButtonRow(TextScreen& screen, const std::vector<Button>& buttons, int row, bool colours) {
    int column = (screen.Columns() - ButtonRowColumns(buttons)) / 2;
    for (std::size_t button = 0; button < buttons.size(); ++button) {
        const std::u32string text = host::ButtonText(button + 1, buttons[button].caption);
        const int columns = host::ButtonColumns(text);
        host::PaintButton(screen, {column, row, columns, 2}, text, button == 0, colours);
        column += columns + 2;
    }
}

TextScreen Picture(const std::u16string& text, const std::u16string& caption, std::uint32_t type,
                   const Canvas& canvas) {
    constexpr int textColumn = 6;  // behind frame and icon
    constexpr int otherColumns = textColumn + 3;
    constexpr int widest = 66;  // longer lines are hard to read
    const std::vector<Button> buttons = ButtonsOfType(type);
    const std::vector<std::u32string> lines = host::WrappedLines(text, std::min(canvas.columns, widest) - otherColumns);
    int columns = std::max(ButtonRowColumns(buttons) + 3,
                           std::min(host::DisplayWidth(host::Printable(caption)) + 9, canvas.columns));
    for (const std::u32string& line : lines) {
        columns = std::max(columns, host::DisplayWidth(line) + otherColumns);
    }
    const int rows = static_cast<int>(lines.size());
    TextScreen screen(std::min(columns, canvas.columns), rows + 6, host::ClientStyle);
    const auto [icon, colour] = IconOfType(type);
    screen.Write(3, 2, icon, {{}, colour, true});
    for (int row = 0; row < rows; ++row) {
        screen.Write(textColumn, row + 2, lines[static_cast<std::size_t>(row)]);
    }
    PaintButtonRow(screen, buttons, rows + 3, canvas.colours);
    host::PaintFrame(screen, caption);
    return screen;
}

std::u16string Choices(const std::vector<Button>& buttons) {
    std::u16string choices;
    for (const Button& button : buttons) {
        choices += button.caption + u", ";
    }
    return choices + u"die Nummer davor, x zum Schließen.";
}

std::int32_t Answer(const std::u16string& text, const std::u16string& caption, std::uint32_t type) {
    const std::vector<Button> buttons = ButtonsOfType(type);
    host::ConsolePicture picture;
    std::vector<std::u32string> notice;
    for (;;) {
        const Canvas canvas = host::ConsoleCanvas();
        picture.Show(Picture(text, caption, type, canvas).Print(canvas.colours) +
                     host::Footer(notice, u"Name oder Nummer · x Schließen", canvas));
        const std::optional<std::u16string> line = host::ConsoleReadLine();
        const host::Input input = host::InputMeaning(line, Captions(buttons), false);
        if (const auto* const click = std::get_if<host::ClickInput>(&input)) {
            return buttons[click->button].answer;
        }
        if (std::holds_alternative<host::CloseInput>(input)) {
            return buttons.back().answer;  // the close box stands for Cancel, or for the one button
        }
        notice = host::UnknownInputNotice(line.value_or(u""), Choices(buttons), canvas);
    }
}

}  // namespace

std::int32_t MessageBoxW(const std::u16string& text, const std::u16string& caption, std::uint32_t type) {
    const Handle owner = host::ActiveWindow();
    const std::int32_t answer = Answer(text, caption, type);
    host::WindowActivate(owner);
    return answer;
}

void MessageBeep() {
    host::ConsoleBeep();
}

}  // namespace platform
