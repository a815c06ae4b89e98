#pragma once

#include <newt.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/host/console/Dialog.h"

// Text as newt shows it: UTF-8, measured in cells.
namespace platform::host {

struct CellArea {
    int left;
    int top;
    int width;
    int height;
};

// The cells that a text without line ends takes: one to each character.
int Columns(const std::string& text);

// As much of it as these columns hold.
std::string FirstColumns(const std::string& text, int columns);

// The lines of a text, broken at blanks to be no longer than `columns`, which is at least 1.
std::vector<std::string> WrappedLines(const std::string& text, int columns);

// A label that is as large as its text, wrapped to these columns at most, for a grid to place. Beyond these rows it
// takes the focus, and is scrolled.
newtComponent WrappedLabel(const DialogControl& label, int columns, int rows);

// A label. A text that is longer than its area can be scrolled, and shows its first failure at first.
class NewtLabel {
public:
    NewtLabel(newtComponent form, const DialogControl& label, const CellArea& area);

    // Moves the text by this many rows, as far as it goes.
    void Scroll(int rows);
    [[nodiscard]] bool Scrolls() const { return bar_ != nullptr; }
    [[nodiscard]] int Rows() const { return rows_; }

private:
    void Show();

    int rows_;
    std::vector<std::string> lines_;
    int top_ = 0;
    newtComponent text_;
    newtComponent bar_ = nullptr;
};

}  // namespace platform::host
