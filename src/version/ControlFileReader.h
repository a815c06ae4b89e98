#pragma once

#include <cstdint>

#include "common/Text.h"
#include "common/TextFile.h"

// The sections of a control file that hold the products' tables.
inline constexpr TextView MainSection = u"Tallora";
inline constexpr TextView ReportingSection = u"Reporting";

// Reads a control file line by line, as an import takes it. It gives no meaning to any section, and none to "[End]".
class ControlFileReader {
public:
    // Raises the language's error for a file that cannot be opened.
    explicit ControlFileReader(const Text& path) : file_(path) {}

    // Goes to the next line that is not empty; false behind the last one. Raises when the file cannot be read, and the
    // overflow error (6) on a line of more than 32767 characters.
    bool NextLine();

    // The line's number in the file, from 1.
    [[nodiscard]] std::int32_t Number() const { return number_; }
    // The line without the blanks at its ends; tabs stay.
    [[nodiscard]] const Text& Line() const { return line_; }
    // True for the head of a section.
    [[nodiscard]] bool IsHead() const { return isHead_; }
    // The section that the line belongs to or, as its head, begins: what stands between the head's first character and
    // its last one, whatever that is. Empty above the first head.
    [[nodiscard]] const Text& Section() const { return section_; }

private:
    TextFileReader file_;
    std::int32_t number_ = 0;
    Text line_;
    bool isHead_ = false;
    Text section_;
};
