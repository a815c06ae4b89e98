#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

// The two streams that the front end talks through: a person's terminal or a pipe.
namespace platform::host {

struct ConsoleState;

// Puts other streams (file descriptors, which stay the caller's) in the place of standard input and output as long as
// it lives.
class ConsoleStreams {
public:
    ConsoleStreams(int input, int output);
    ~ConsoleStreams();
    ConsoleStreams(const ConsoleStreams&) = delete;
    ConsoleStreams& operator=(const ConsoleStreams&) = delete;

private:
    std::unique_ptr<ConsoleState> earlier_;
};

// The terminal's size in cells, not below 40 columns and 10 rows; 80 by 24 for a pipe.
int ConsoleColumns();
int ConsoleRows();

// True for a terminal that shows colours, unless NO_COLOR says that the person does not want them.
bool ConsoleColours();

// True when a person sees and types on one terminal that moves its cursor.
bool ConsoleDrawsInPlace();

// Writes UTF-8 text. A terminal that was lent is taken back first.
void ConsoleWrite(std::string_view text);

// The next line, without blanks at its ends; nothing at the end of input. Behind the first few thousand bytes a line is
// cut. What comes through a pipe is written too, so that the output reads like a terminal's.
std::optional<std::u16string> ConsoleReadLine();

// Sounds a terminal's bell.
void ConsoleBeep();

// A picture that is drawn over its earlier self where a terminal allows it, and vanishes with the object. Everything
// that was written behind it goes too. Where something may stand on the terminal that we did not write, it is drawn
// anew below, so that no foreign message is lost.
class ConsolePicture {
public:
    ConsolePicture();
    ~ConsolePicture() { Erase(); }
    ConsolePicture(const ConsolePicture&) = delete;
    ConsolePicture& operator=(const ConsolePicture&) = delete;

    void Show(std::string_view text);

private:
    void Erase();

    long firstLine_;
};

}  // namespace platform::host
