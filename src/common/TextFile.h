#pragma once

#include <string>
#include <string_view>

#include "common/OwnedHandle.h"
#include "common/Text.h"

// Reads a text file in the system's 8-bit code page line by line. Lines end with CR LF, LF or CR; the last line may
// lack a line ending. If a file call fails, raises the run-time error for the call's status.
class TextFileReader {
public:
    explicit TextFileReader(const Text& path);

    // Not const, because the function reads ahead.
    bool AtEnd();
    Text ReadLine();

private:
    bool Fill();

    OwnedHandle file_;
    std::string buffer_;
    std::size_t next_ = 0;
};

// Writes `text` to a file in the system's 8-bit code page. If a file call fails, raises the run-time error for the
// call's status.
//
// If `overwrite` is true, writes a temporary file in the same folder, copies the existing file's permissions to it and
// renames it over the existing file. An error or a killed process therefore leaves either the old file or the new one.
// If the folder or another program prevents this, overwrites the existing file in place. If `overwrite` is false and
// the file exists, raises 58, even if another process has just created the file.
void WriteTextFile(const Text& path, const Text& text, bool overwrite);

// Like WriteTextFile, but writes the bytes unchanged.
void WriteBytes(const Text& path, std::string_view bytes, bool overwrite);
