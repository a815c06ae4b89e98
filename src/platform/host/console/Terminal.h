#pragma once

#include <termios.h>

#include <csignal>

// Who holds the terminal: the front end, or a program that was started from it and that a person now works in.
namespace platform::host {

// True when a person sees and types on one terminal: standard input and output are that terminal.
bool HasTerminal();

// Lends the terminal to a program that a person works in, as long as it lives. The program is started and waited for in
// the meantime, in our own process group. Ctrl-C and Ctrl-\ are the program's alone then: it has to be started with
// SIGINT and SIGQUIT set back to their defaults. At the end the terminal has its modes from before, whatever the
// program left, and our windows are back. Without a terminal nothing happens.
class TerminalLoan {
public:
    TerminalLoan();
    ~TerminalLoan();
    TerminalLoan(const TerminalLoan&) = delete;
    TerminalLoan& operator=(const TerminalLoan&) = delete;

private:
    bool lent_ = false;
    termios modes_{};
    struct sigaction earlierInterrupt_ {};
    struct sigaction earlierQuit_ {};
};

}  // namespace platform::host
