#include "platform/host/console/NewtText.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>

namespace platform::host {

namespace {

// What a failure in a text begins with, as the reports mark it.
constexpr std::string_view FailureMark = "***";

// The nearest of a terminal's eight colours, by name and by number.
int ColourNumber(Colour colour) {
    const auto bright = [&](unsigned shift) { return (static_cast<unsigned>(colour) >> shift & 0xFFU) >= 0x80; };
    return (bright(0) ? 1 : 0) + (bright(8) ? 2 : 0) + (bright(16) ? 4 : 0);
}

char* ColourName(int number) {
    static std::array<std::string, 8> names{"black", "red", "green", "brown", "blue", "magenta", "cyan", "white"};
    return names.at(static_cast<std::size_t>(number)).data();
}

// newt's number for a pair of colours. Each pair has one of its own, so that no dialog changes another's.
int ColourSet(Colour background, Colour text) {
    const int ground = ColourNumber(background);
    const int front = ColourNumber(text);
    const int colours = NEWT_COLORSET_CUSTOM(ground * 8 + front);
    newtSetColor(colours, ColourName(front), ColourName(ground));
    return colours;
}

void SetColours(newtComponent box, const DialogControl& label) {
    if (label.background && label.text) {
        const int colours = ColourSet(*label.background, *label.text);
        newtTextboxSetColors(box, colours, colours);
    }
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

}  // namespace

int Columns(const std::string& text) {
    return static_cast<int>(
        std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80; }));
}

std::string FirstColumns(const std::string& text, int columns) {
    std::string first = text;
    while (Columns(first) > columns) {
        first.pop_back();
    }
    return first;
}

std::vector<std::string> WrappedLines(const std::string& text, int columns) {
    int width = 0;
    int height = 0;
    std::string copy = text;
    const std::unique_ptr<char, void (*)(void*)> wrapped(newtReflowText(copy.data(), columns, 0, 0, &width, &height),
                                                         std::free);
    return Lines(wrapped.get());
}

newtComponent WrappedLabel(const DialogControl& label, int columns, int rows) {
    constexpr int mostColumns = 60;
    std::string text = ShownText(label.design.caption);
    const int width = std::clamp(columns, 1, mostColumns);
    newtComponent box = nullptr;
    if (static_cast<int>(WrappedLines(text, width).size()) > rows) {
        constexpr int scrollbarColumns = 2;
        box = newtTextbox(-1, -1, std::max(width - scrollbarColumns, 1), rows, NEWT_FLAG_WRAP | NEWT_FLAG_SCROLL);
        newtTextboxSetText(box, text.c_str());
    } else {
        box = newtTextboxReflowed(-1, -1, text.data(), width, 0, 0, 0);
    }
    SetColours(box, label);
    return box;
}

NewtLabel::NewtLabel(newtComponent form, const DialogControl& label, const CellArea& area)
    : rows_(area.height), lines_(WrappedLines(ShownText(label.design.caption), std::max(area.width, 1))) {
    const bool scrolls = static_cast<int>(lines_.size()) > rows_ && rows_ > 1;
    const int width = std::max(area.width - (scrolls ? 1 : 0), 1);
    text_ = newtTextbox(area.left, area.top, width, rows_, 0);
    SetColours(text_, label);
    newtFormAddComponent(form, text_);
    if (scrolls) {
        lines_ = WrappedLines(ShownText(label.design.caption), width);
        bar_ =
            newtVerticalScrollbar(area.left + width, area.top, rows_, NEWT_COLORSET_WINDOW, NEWT_COLORSET_ACTCHECKBOX);
        newtFormAddComponent(form, bar_);
        const auto failure = std::ranges::find_if(
            lines_, [](const std::string& line) { return line.find(FailureMark) != std::string::npos; });
        Scroll(failure == lines_.end() ? 0 : static_cast<int>(failure - lines_.begin()) - rows_ / 2);
    } else {
        Show();
    }
}

void NewtLabel::Scroll(int rows) {
    const int last = std::max(static_cast<int>(lines_.size()) - rows_, 0);
    top_ = std::clamp(top_ + rows, 0, last);
    if (bar_ != nullptr) {
        newtScrollbarSet(bar_, top_, last);
    }
    Show();
}

void NewtLabel::Show() {
    std::string shown;
    for (int row = top_; row < std::min(top_ + rows_, static_cast<int>(lines_.size())); ++row) {
        shown += lines_[static_cast<std::size_t>(row)] + "\n";
    }
    newtTextboxSetText(text_, shown.c_str());
}

}  // namespace platform::host
