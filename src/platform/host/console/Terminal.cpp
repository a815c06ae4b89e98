#include "platform/host/console/Terminal.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <optional>

namespace platform::host {

namespace {

struct Loan {
    pid_t processGroup;
    termios modes;  // ours, from before the loan
};

std::optional<Loan> loan;

// The system stops a background process that changes the terminal, unless it blocks the signal for that.
class TerminalStopBlocked {
public:
    TerminalStopBlocked() {
        sigset_t stop;
        sigemptyset(&stop);
        sigaddset(&stop, SIGTTOU);
        sigprocmask(SIG_BLOCK, &stop, &earlier_);
    }
    ~TerminalStopBlocked() { sigprocmask(SIG_SETMASK, &earlier_, nullptr); }
    TerminalStopBlocked(const TerminalStopBlocked&) = delete;
    TerminalStopBlocked& operator=(const TerminalStopBlocked&) = delete;

private:
    sigset_t earlier_;
};

bool InForeground() {
    return tcgetpgrp(STDIN_FILENO) == getpgrp();
}

// The group may have been stopped for touching the terminal before it was lent.
bool GiveTerminal(pid_t processGroup) {
    const TerminalStopBlocked blocked;
    if (tcsetpgrp(STDIN_FILENO, processGroup) != 0) {
        return false;
    }
    kill(-processGroup, SIGCONT);
    return true;
}

void RestoreTerminal(const termios& modes) {
    const TerminalStopBlocked blocked;
    tcsetpgrp(STDIN_FILENO, getpgrp());
    tcsetattr(STDIN_FILENO, TCSADRAIN, &modes);
}

// Waits for the group's end (false) or stop (true).
bool Stopped(pid_t processGroup) {
    int status = 0;
    pid_t changed = 0;
    do {
        changed = waitpid(-processGroup, &status, WUNTRACED);
    } while (changed < 0 && errno == EINTR);
    return changed > 0 && WIFSTOPPED(status);
}

// Stops us as Ctrl-Z stops any job, so that the shell that we were started from takes over. Without such a shell the
// system ignores the signals. False when we were continued in the background and must leave the terminal alone.
bool StopWithBorrower() {
    kill(0, SIGTSTP);
    if (!InForeground()) {
        kill(0, SIGTTIN);
    }
    return InForeground();
}

}  // namespace

bool HasTerminal() {
    struct stat input {};
    struct stat output {};
    return isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1 && fstat(STDIN_FILENO, &input) == 0 &&
           fstat(STDOUT_FILENO, &output) == 0 && input.st_rdev == output.st_rdev;
}

TerminalLoan::TerminalLoan() : lent_(HasTerminal()) {
    if (lent_) {
        tcgetattr(STDIN_FILENO, &modes_);
        struct sigaction ignored {};
        ignored.sa_handler = SIG_IGN;
        sigaction(SIGINT, &ignored, &earlierInterrupt_);
        sigaction(SIGQUIT, &ignored, &earlierQuit_);
    }
}

TerminalLoan::~TerminalLoan() {
    if (lent_) {
        tcsetattr(STDIN_FILENO, TCSADRAIN, &modes_);
        sigaction(SIGINT, &earlierInterrupt_, nullptr);
        sigaction(SIGQUIT, &earlierQuit_, nullptr);
    }
}

bool TerminalHeld() {
    return isatty(STDIN_FILENO) == 1 && (loan || InForeground());
}

void TerminalLend(pid_t processGroup) {
    TerminalTakeBack();
    termios modes{};
    if (!TerminalHeld() || tcgetattr(STDIN_FILENO, &modes) != 0) {
        return;
    }
    if (GiveTerminal(processGroup)) {
        loan = {processGroup, modes};
    }
}

bool TerminalTakeBack() {
    if (!loan) {
        return false;
    }
    const Loan ended = *loan;
    while (Stopped(ended.processGroup)) {
        RestoreTerminal(ended.modes);
        if (!StopWithBorrower() || !GiveTerminal(ended.processGroup)) {
            break;
        }
    }
    RestoreTerminal(ended.modes);
    loan.reset();
    return true;
}

}  // namespace platform::host
