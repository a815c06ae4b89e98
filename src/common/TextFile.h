#pragma once

#include <string>
#include <string_view>

#include "common/OwnedHandle.h"
#include "common/Text.h"

// Reads a text file in the system's 8-bit code page line by line. CR LF, LF and CR end a line; the last line may lack a
// line end. Every failure raises the run-time error for the status of the failed call.
class TextFileReader {
public:
    explicit TextFileReader(const Text& path);

    // Not const: reads ahead.
    bool AtEnd();
    Text ReadLine();

private:
    bool Fill();

    OwnedHandle file_;
    std::string buffer_;
    std::size_t next_ = 0;
};

// Writes `text` to a file in the system's 8-bit code page. On failure raises the run-time error for the status of the
// failed call.
//
// With `overwrite`, writes a temporary file in the same folder, gives it the permissions of the existing file and
// renames it over that file, so that an error or a killed process leaves either the old or the new file. If the folder
// or another program prevents this, truncates the existing file and writes it in place. If the file exists and
// `overwrite` is false, raises 58, even if another process has just created it.
void WriteTextFile(const Text& path, const Text& text, bool overwrite);

// Like WriteTextFile, but writes the bytes unchanged.
void WriteBytes(const Text& path, std::string_view bytes, bool overwrite);
