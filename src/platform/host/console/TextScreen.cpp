#include "platform/host/console/TextScreen.h"

#include <algorithm>
#include <utility>

#include "platform/host/Unicode.h"
#include "platform/host/console/TextLayout.h"

namespace platform::host {

namespace {

// The nearest of the six steps 0, 95, 135, 175, 215, 255 of a channel in a terminal's cube of 216 colours.
int CubeStep(int channel) {
    if (channel < 48) {
        return 0;
    }
    return channel < 115 ? 1 : (channel - 35) / 40;
}

// The colour's number among a terminal's 256, of which the cube begins at 16.
int TerminalColour(Colour colour) {
    return 16 + 36 * CubeStep(colour & 0xFF) + 6 * CubeStep(colour >> 8 & 0xFF) + CubeStep(colour >> 16 & 0xFF);
}

std::string StyleSequence(const TextStyle& style) {
    std::string sequence = "\x1B[0";
    if (style.bold) {
        sequence += ";1";
    }
    if (style.text) {
        sequence += ";38;5;" + std::to_string(TerminalColour(*style.text));
    }
    if (style.background) {
        sequence += ";48;5;" + std::to_string(TerminalColour(*style.background));
    }
    return sequence + "m";
}

}  // namespace

TextScreen::TextScreen(int columns, int rows, const TextStyle& style)
    : columns_(std::max(columns, 0)),
      rows_(std::max(rows, 0)),
      cells_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_), Cell{" ", style}) {
}

bool TextScreen::Contains(int column, int row) const {
    return column >= 0 && column < columns_ && row >= 0 && row < rows_;
}

TextScreen::Cell& TextScreen::At(int column, int row) {
    return cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                  static_cast<std::size_t>(column)];
}

void TextScreen::Part(int column, int row) {
    if (At(column, row).character.empty() && column > 0) {
        At(column - 1, row).character = " ";
    }
    if (Contains(column + 1, row) && At(column + 1, row).character.empty()) {
        At(column + 1, row).character = " ";
    }
}

void TextScreen::Put(int column, int row, std::string character, const TextStyle& style) {
    if (!Contains(column, row)) {
        return;
    }
    Part(column, row);
    Cell& cell = At(column, row);
    cell.character = std::move(character);
    cell.style.bold = style.bold;
    if (style.background) {
        cell.style.background = style.background;
    }
    if (style.text) {
        cell.style.text = style.text;
    }
}

void TextScreen::Fill(const CellArea& area, const TextStyle& style) {
    for (int row = area.row; row < area.row + area.rows; ++row) {
        for (int column = area.column; column < area.column + area.columns; ++column) {
            Put(column, row, " ", style);
        }
    }
}

void TextScreen::Write(int column, int row, std::u32string_view text, const TextStyle& style) {
    int last = column;  // the cell that a joining mark belongs to
    for (const char32_t codePoint : text) {
        std::string character;
        AppendUtf8(character, codePoint);
        const int width = DisplayWidth(codePoint);
        if (width == 0) {
            if (Contains(last, row)) {
                At(last, row).character += character;
            }
            continue;
        }
        last = column;
        if (width == 2 && Contains(column, row) && !Contains(column + 1, row)) {
            character = " ";
        }
        Put(column, row, std::move(character), style);
        if (width == 2) {
            Put(column + 1, row, " ", style);
            if (Contains(column, row) && Contains(column + 1, row)) {
                At(column + 1, row).character.clear();
            }
        }
        column += width;
    }
}

std::string TextScreen::Print(bool colours) const {
    std::string printed;
    auto cell = cells_.begin();
    for (int row = 0; row < rows_; ++row) {
        TextStyle current;
        for (int column = 0; column < columns_; ++column, ++cell) {
            if (colours && cell->style != current) {
                current = cell->style;
                printed += StyleSequence(current);
            }
            printed += cell->character;
        }
        printed += current == TextStyle() ? "\n" : "\x1B[0m\n";
    }
    return printed;
}

}  // namespace platform::host
