#include "platform/host/console/Painting.h"

#include <algorithm>

#include "platform/host/Unicode.h"
#include "platform/host/console/Console.h"
#include "platform/host/console/TextLayout.h"

namespace platform::host {

namespace {

// Steps of a terminal's colour cube, so that they look the same everywhere.
constexpr TextStyle FrameStyle{0xD7D7D7, 0x5F5F5F};
constexpr TextStyle CaptionStyle{0x870000, 0xFFFFFF, true};
constexpr TextStyle FaceStyle{0xFFFFFF, 0x000000};
constexpr TextStyle FocusStyle{0xFFD7AF, 0x000000, true};
constexpr TextStyle ShadowStyle{{}, 0x878787};

std::u32string Repeated(int count, char32_t character) {
    return std::u32string(static_cast<std::size_t>(std::max(count, 0)), character);
}

std::u32string Centred(std::u32string_view text, int columns) {
    const int blanks = std::max(columns - DisplayWidth(text), 0);
    return Repeated(blanks / 2, U' ') + std::u32string(text) + Repeated(blanks - blanks / 2, U' ');
}

std::string Utf8(std::u32string_view text) {
    std::string bytes;
    for (const char32_t codePoint : text) {
        AppendUtf8(bytes, codePoint);
    }
    return bytes;
}

}  // namespace

Canvas ConsoleCanvas() {
    return {ConsoleColumns(), ConsoleRows(), ConsoleColours()};
}

void PaintFrame(TextScreen& screen, std::u16string_view caption) {
    const int last = screen.Columns() - 1;
    const int bottom = screen.Rows() - 1;
    const std::u32string title = Shortened(Printable(caption), last - 8);
    screen.Write(0, 0, U"┌" + Repeated(last - 4, U'─') + U"[x]┐", CaptionStyle);
    screen.Write(2, 0, U" " + title + U" ", CaptionStyle);
    for (int row = 1; row < bottom; ++row) {
        screen.Write(0, row, U"│", FrameStyle);
        screen.Write(last, row, U"│", FrameStyle);
    }
    screen.Write(0, bottom, U"└" + Repeated(last - 1, U'─') + U"┘", FrameStyle);
}

std::u32string ButtonText(std::size_t number, std::u16string_view caption) {
    return CodePoints(FromUtf8(std::to_string(number))) + U" " + Printable(caption);
}

int ButtonColumns(std::u32string_view text) {
    return DisplayWidth(text) + 4;
}

void PaintButton(TextScreen& screen, const CellArea& area, std::u32string_view text, bool focused, bool colours) {
    const std::u32string label = focused ? U"►" + std::u32string(text) + U"◄" : std::u32string(text);
    const int columns = std::max(area.columns, DisplayWidth(label) + 2);
    const int faceRows = std::max(area.rows - 1, 1);
    const int middle = area.row + (faceRows - 1) / 2;
    if (!colours) {
        screen.Write(area.column, middle, U"[" + Centred(label, columns - 2) + U"]");
        return;
    }
    const TextStyle& face = focused ? FocusStyle : FaceStyle;
    screen.Fill({area.column, area.row, columns, faceRows}, face);
    screen.Write(area.column, middle, Centred(label, columns), face);
    if (area.rows > 1) {
        screen.Write(area.column + columns, area.row, U"▄", ShadowStyle);
        screen.Write(area.column + 1, area.row + faceRows, Repeated(columns, U'▀'), ShadowStyle);
    }
}

std::string Footer(const std::vector<std::u32string>& notice, std::u16string_view hint, const Canvas& canvas) {
    std::string footer;
    for (const std::u32string& line : notice) {
        footer += Utf8(line) + "\n";
    }
    for (const std::u32string& line : WrappedLines(hint, canvas.columns)) {
        footer += canvas.colours ? "\x1B[2m" + Utf8(line) + "\x1B[0m\n" : Utf8(line) + "\n";
    }
    return footer + "> ";
}

std::vector<std::u32string> UnknownInputNotice(std::u16string_view line, std::u16string_view choices,
                                               const Canvas& canvas) {
    std::u16string notice;
    if (!line.empty()) {
        constexpr std::size_t shown = 40;
        notice = u"»" + std::u16string(line.substr(0, shown)) + (line.size() > shown ? u"…" : u"") +
                 u"« gibt es hier nicht. ";
    } else if (ConsoleDrawsInPlace()) {
        return {};
    }
    return WrappedLines(notice + u"Eingeben lässt sich: " + std::u16string(choices), canvas.columns);
}

}  // namespace platform::host
