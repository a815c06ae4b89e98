#pragma once

#include <string>

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

// A text file in the system's 8-bit code page, written whole or not at all: the text goes to a file beside it, which
// takes its name in Commit. Without that the earlier file stays as it was. All operations raise the error of a status.
class TextFileWriter {
public:
    explicit TextFileWriter(const Text& path);
    ~TextFileWriter();
    TextFileWriter(const TextFileWriter&) = delete;
    TextFileWriter& operator=(const TextFileWriter&) = delete;

    void Write(const Text& text);
    // `line` and CR LF.
    void WriteLine(const Text& line);
    void Commit();

private:
    void Flush();

    std::string path_;
    std::string pathBeside_;
    OwnedHandle file_;
    std::string buffer_;
    bool committed_ = false;
};
