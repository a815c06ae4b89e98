#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/WindowSystem.h"

namespace platform::host {

// How cells look. A colour that is not given leaves what the cell has.
struct TextStyle {
    std::optional<Colour> background = {};
    std::optional<Colour> text = {};
    bool bold = false;
    bool operator==(const TextStyle&) const = default;
};

// A part of the screen, in cells.
struct CellArea {
    int column;
    int row;
    int columns;
    int rows;
};

// A picture made of character cells, painted from back to front and then printed. What is painted beyond its edges is
// cut off.
class TextScreen {
public:
    TextScreen(int columns, int rows, const TextStyle& style);

    [[nodiscard]] int Columns() const { return columns_; }
    [[nodiscard]] int Rows() const { return rows_; }

    // Gives the area's cells this look, and blanks for their characters.
    void Fill(const CellArea& area, const TextStyle& style);
    void Write(int column, int row, std::u32string_view text, const TextStyle& style = {});

    // The lines of the picture in UTF-8, each ended by LF; without `colours` as bare characters.
    [[nodiscard]] std::string Print(bool colours) const;

private:
    // A character with the marks that join it. The cell behind a wide character has none.
    struct Cell {
        std::string character = " ";
        TextStyle style;
    };

    [[nodiscard]] bool Contains(int column, int row) const;
    Cell& At(int column, int row);
    // Blanks the other half of a wide character that is about to lose one.
    void Part(int column, int row);
    void Put(int column, int row, std::string character, const TextStyle& style);

    int columns_;
    int rows_;
    std::vector<Cell> cells_;
};

}  // namespace platform::host
