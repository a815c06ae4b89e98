#include "platform/host/console/WindowPicture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "platform/host/console/TextLayout.h"

namespace platform::host {

namespace {

constexpr int ColumnTwips = 80;
constexpr int RowTwips = 220;
constexpr int LowestRowTwips = 250;  // beyond it a button would lose its row of its own

// Lines of a terminal that the picture leaves: the frame's two, the hint and the prompt.
constexpr int OtherRows = 4;

// How many twips a cell stands for.
struct Scale {
    int column;
    int row;
};

int Quotient(std::int32_t length, int divisor) {
    return (length + divisor - 1) / std::max(divisor, 1);
}

Scale ScaleOf(Size client, const Canvas& canvas) {
    return {std::max(ColumnTwips, Quotient(client.width, canvas.columns - 2)),
            std::clamp(Quotient(client.height, canvas.rows - OtherRows), RowTwips, LowestRowTwips)};
}

// A length in cells; far beyond any window it makes no difference how far.
double ExactCells(std::int64_t twips, int cellTwips) {
    constexpr double limit = 10000;
    return std::clamp(static_cast<double>(twips) / static_cast<double>(cellTwips), -limit, limit);
}

int Cells(std::int64_t twips, int cellTwips) {
    return static_cast<int>(std::lround(ExactCells(twips, cellTwips)));
}

// The control's place on the screen, behind the frame's column and row. Its size is that of all controls of its twips,
// wherever it stands.
CellArea AreaOf(const Rectangle& place, const Scale& scale) {
    return {Cells(place.left, scale.column) + 1, Cells(place.top, scale.row) + 1,
            std::max(Cells(place.width, scale.column), 1), std::max(Cells(place.height, scale.row), 1)};
}

// Characters of a terminal are wider than a window's: a label of a single row may need the next one too, if it reaches
// into it.
CellArea LabelArea(const Rectangle& place, const Scale& scale) {
    CellArea area = AreaOf(place, scale);
    if (area.rows == 1) {
        const double bottom = std::ceil(ExactCells(std::int64_t{place.top} + place.height, scale.row));
        area.rows = std::max(static_cast<int>(bottom) + 1 - area.row, 1);
    }
    return area;
}

// A label does not scroll: what lies beyond its lower edge stays out of sight.
void PaintLabel(TextScreen& screen, const CellArea& area, const HostControl& label) {
    const TextStyle style{label.background, label.text, label.design.bold};
    if (label.background) {
        screen.Fill(area, style);
    }
    const std::vector<std::u32string> lines = WrappedLines(label.design.caption, area.columns);
    for (int row = 0; row < std::min(area.rows, static_cast<int>(lines.size())); ++row) {
        screen.Write(area.column, area.row + row, lines[static_cast<std::size_t>(row)], style);
    }
}

bool HasToolTips(const HostWindow& window) {
    return std::any_of(window.controls.begin(), window.controls.end(),
                       [](const HostControl& control) { return control.design.visible && !control.toolTip.empty(); });
}

std::u16string Joined(const std::vector<std::u16string>& parts, std::u16string_view separator) {
    std::u16string joined;
    for (const std::u16string& part : parts) {
        joined += joined.empty() ? part : std::u16string(separator) + part;
    }
    return joined;
}

// The names that tool tips are told by: a button's number and caption, a label's text.
std::vector<std::pair<std::u32string, std::u16string>> NamedToolTips(const HostWindow& window) {
    std::vector<std::pair<std::u32string, std::u16string>> named;
    std::size_t number = 0;
    for (const HostControl& control : window.controls) {
        const bool isButton = control.design.kind == ControlKind::Button;
        number += isButton ? 1 : 0;
        if (control.design.visible && !control.toolTip.empty()) {
            named.emplace_back(isButton ? ButtonText(number, control.design.caption)
                                        : Shortened(Printable(control.design.caption), 16),
                               control.toolTip);
        }
    }
    return named;
}

}  // namespace

TextScreen WindowPicture(const HostWindow& window, const Canvas& canvas) {
    const Size client = ClientOf(window);
    const Scale scale = ScaleOf(client, canvas);
    constexpr int fewestColumns = 20;  // room for a frame with its close box
    TextScreen screen(std::max(Cells(client.width, scale.column) + 2, fewestColumns),
                      Cells(client.height, scale.row) + 2, ClientStyle);
    std::size_t number = 0;
    for (const HostControl& control : window.controls) {
        const bool isButton = control.design.kind == ControlKind::Button;
        number += isButton ? 1 : 0;
        if (!control.design.visible) {
            continue;
        }
        const Rectangle& place = control.design.place;
        if (isButton) {
            PaintButton(screen, AreaOf(place, scale), ButtonText(number, control.design.caption), false,
                        canvas.colours);
        } else {
            PaintLabel(screen, LabelArea(place, scale), control);
        }
    }
    PaintFrame(screen, window.caption);
    return screen;
}

std::u16string WindowHint(const HostWindow& window) {
    std::vector<std::u16string> parts;
    if (!ButtonsOf(window).empty()) {
        parts.emplace_back(u"Name oder Nummer");
    }
    if (HasToolTips(window)) {
        parts.emplace_back(u"? Erklärungen");
    }
    if (window.sizable) {
        parts.emplace_back(u"Größe in Twips, zum Beispiel 9000x18000");
    }
    parts.emplace_back(u"x Schließen");
    return Joined(parts, u" · ");
}

std::u16string WindowChoices(const HostWindow& window) {
    std::vector<std::u16string> parts;
    const std::vector<std::size_t> buttons = ButtonsOf(window);
    for (const std::size_t button : buttons) {
        if (window.controls[button].design.visible) {
            parts.push_back(window.controls[button].design.caption);
        }
    }
    if (!parts.empty()) {
        parts.back() += u" (oder die Nummer davor)";
    }
    parts.emplace_back(u"? für Erklärungen");
    if (window.sizable) {
        parts.emplace_back(u"Breite x Höhe in Twips, wie 9000x18000");
    }
    parts.emplace_back(u"x zum Schließen");
    return Joined(parts, u", ") + u".";
}

std::vector<std::u32string> ToolTipLines(const HostWindow& window, const Canvas& canvas) {
    const auto named = NamedToolTips(window);
    if (named.empty()) {
        return {U"Hier gibt es keine Erklärungen."};
    }
    int indent = 0;
    for (const auto& [name, toolTip] : named) {
        indent = std::max(indent, DisplayWidth(name) + 2);
    }
    std::vector<std::u32string> lines;
    for (const auto& [name, toolTip] : named) {
        std::u32string head = name;
        for (const std::u32string& line : WrappedLines(toolTip, canvas.columns - indent)) {
            head.resize(head.size() + static_cast<std::size_t>(indent - DisplayWidth(head)), U' ');
            lines.push_back(head + line);
            head.clear();
        }
    }
    return lines;
}

}  // namespace platform::host
