#pragma once

#include <sys/types.h>
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

// True when the front end talks to a person: standard input is a terminal that we hold in the foreground, or that we
// have lent.
bool TerminalHeld();

// Lends the terminal to the process group of a program that was just started; the front end takes it back, waiting for
// that program to end, before it next writes or reads. An earlier borrower is waited for first. Passed over when no
// terminal is held.
void TerminalLend(pid_t processGroup);

// Takes the terminal back: waits until the borrower has ended, and restores the terminal's modes. When the borrower is
// stopped (Ctrl-Z), we stop with it, and when we are continued, so is it. True when the terminal was lent. A borrower
// that somebody else has waited for counts as ended.
bool TerminalTakeBack();

}  // namespace platform::host
