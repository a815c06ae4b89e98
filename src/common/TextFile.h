#pragma once

#include <string>
#include <string_view>

#include "common/OwnedHandle.h"
#include "common/Text.h"

// A text file in the system's 8-bit code page, read line by line. CR LF, LF and CR end a line; the last one need not be
// ended. The file is closed with the object, so that no error leaves it open.
class TextFileReader {
public:
    // Raises the error of the status when the file cannot be opened.
    explicit TextFileReader(const Text& path);

    // Both raise when the file cannot be read.
    bool AtEnd();
    Text ReadLine();

private:
    bool Fill();

    OwnedHandle file_;
    std::string buffer_;
    std::size_t next_ = 0;
};

// Writes a file in the system's 8-bit code page, with `text` as it is. Raises the error of the status that ends it.
//
// With `overwrite` the text goes to a file beside it, which then takes the place of an earlier file and its rights; an
// error leaves the earlier file as it was. Only where the folder or another program refuses that, the earlier file is
// emptied and written where it is. Without `overwrite` a file that is there raises that it exists (58), also one that
// another program has just made.
void WriteTextFile(const Text& path, const Text& text, bool overwrite);
// The same with bytes as they are.
void WriteBytes(const Text& path, std::string_view bytes, bool overwrite);
