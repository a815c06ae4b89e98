#include "platform/host/console/Console.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <utility>

#include "platform/host/Unicode.h"
#include "platform/host/console/Terminal.h"
#include "platform/host/console/TextLayout.h"

namespace platform::host {

struct ConsoleState {
    int input = STDIN_FILENO;
    int output = STDOUT_FILENO;
    std::string buffer = {};    // read, but not yet handed out
    long line = 0;              // lines written so far
    long firstCertainLine = 0;  // from here on we know everything that stands on the terminal
};

namespace {

// A longer line means nothing that we know, and is not worth its memory.
constexpr std::size_t LongestLine = 4096;

std::unique_ptr<ConsoleState>& State() {
    static auto state = std::make_unique<ConsoleState>();
    return state;
}

std::string_view EnvironmentText(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

bool IsTerminal(int stream) {
    return isatty(stream) == 1;
}

winsize TerminalSize() {
    winsize size{};
    if (ioctl(State()->output, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0) {
        return {24, 80, 0, 0};
    }
    return size;
}

// After a call that did not come through: false when it never will. A stream that another program has set not to block
// is waited for.
bool WorthRepeating(int stream, short event) {
    if (errno == EAGAIN) {
        pollfd waiting{stream, event, 0};
        poll(&waiting, 1, -1);
        return true;
    }
    return errno == EINTR;
}

void WriteAll(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(State()->output, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (!WorthRepeating(State()->output, POLLOUT)) {
            return;
        }
    }
}

// Reads more input behind what is there; false at its end.
bool FillBuffer() {
    std::array<char, 4096> bytes{};
    for (;;) {
        const ssize_t count = read(State()->input, bytes.data(), bytes.size());
        if (count >= 0) {
            State()->buffer.append(bytes.data(), static_cast<std::size_t>(count));
            return count > 0;
        }
        if (!WorthRepeating(State()->input, POLLIN)) {
            return false;
        }
    }
}

// The next line without its end; a last line need not be ended.
std::optional<std::string> TakeLine() {
    std::string& buffer = State()->buffer;
    std::string line;
    for (;;) {
        const std::size_t end = buffer.find('\n');
        line.append(buffer, 0, std::min(end, LongestLine - line.size()));
        if (end != std::string::npos) {
            buffer.erase(0, end + 1);
            return line;
        }
        buffer.clear();
        if (!FillBuffer()) {
            return line.empty() ? std::nullopt : std::optional(line);
        }
    }
}

// A person's terminal has shown what was typed. It stands on one line, unless it is long or holds characters whose
// echo we do not know.
void CountTyped(const std::string& line) {
    ++State()->line;
    const bool plain = std::all_of(line.begin(), line.end(), [](char byte) { return byte >= ' ' && byte <= '~'; });
    constexpr std::size_t promptColumns = 4;
    if (!plain || line.size() + promptColumns >= static_cast<std::size_t>(ConsoleColumns())) {
        State()->firstCertainLine = State()->line;
    }
}

std::u16string WithoutEnds(const std::u16string& line) {
    constexpr const char16_t* ends = u" \t\r";
    const std::size_t first = line.find_first_not_of(ends);
    return first == std::u16string::npos ? std::u16string()
                                         : line.substr(first, line.find_last_not_of(ends) - first + 1);
}

std::string Echo(const std::u16string& line) {
    std::string echo;
    for (const char32_t codePoint : Printable(line)) {
        AppendUtf8(echo, codePoint);
    }
    return echo + "\n";
}

void TakeTerminalBack() {
    if (TerminalTakeBack()) {
        WriteAll("\n");
        State()->firstCertainLine = ++State()->line;
    }
}

}  // namespace

ConsoleStreams::ConsoleStreams(int input, int output)
    : earlier_(std::exchange(State(), std::make_unique<ConsoleState>(ConsoleState{input, output}))) {
}

ConsoleStreams::~ConsoleStreams() {
    State() = std::move(earlier_);
}

int ConsoleColumns() {
    return std::max<int>(TerminalSize().ws_col, 40);
}

int ConsoleRows() {
    return std::max<int>(TerminalSize().ws_row, 10);
}

bool ConsoleColours() {
    return IsTerminal(State()->output) && EnvironmentText("NO_COLOR").empty() && EnvironmentText("TERM") != "dumb";
}

bool ConsoleDrawsInPlace() {
    return IsTerminal(State()->input) && IsTerminal(State()->output) && EnvironmentText("TERM") != "dumb";
}

void ConsoleWrite(std::string_view text) {
    TakeTerminalBack();
    WriteAll(text);
    State()->line += std::count(text.begin(), text.end(), '\n');
}

std::optional<std::u16string> ConsoleReadLine() {
    TakeTerminalBack();
    const std::optional<std::string> line = TakeLine();
    if (!line) {
        ConsoleWrite("\n");
        return std::nullopt;
    }
    const std::u16string text = FromUtf8(*line);
    if (IsTerminal(State()->input)) {
        CountTyped(*line);
    } else {
        ConsoleWrite(Echo(text));
    }
    return WithoutEnds(text);
}

void ConsoleBeep() {
    if (IsTerminal(State()->output)) {
        ConsoleWrite("\a");
    }
}

ConsolePicture::ConsolePicture() : firstLine_(State()->line) {
}

void ConsolePicture::Show(std::string_view text) {
    TakeTerminalBack();
    Erase();
    firstLine_ = State()->line;
    ConsoleWrite(text);
}

void ConsolePicture::Erase() {
    const long lines = State()->line - firstLine_;
    if (lines > 0 && ConsoleDrawsInPlace() && firstLine_ >= State()->firstCertainLine && lines < ConsoleRows()) {
        WriteAll("\x1B[" + std::to_string(lines) + "A\r\x1B[J");
        State()->line = firstLine_;
    }
}

}  // namespace platform::host
