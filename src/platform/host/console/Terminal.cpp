#include "platform/host/console/Terminal.h"

#include <sys/stat.h>
#include <unistd.h>

#include "platform/host/console/NewtView.h"

namespace platform::host {

bool HasTerminal() {
    struct stat input {};
    struct stat output {};
    return isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1 && fstat(STDIN_FILENO, &input) == 0 &&
           fstat(STDOUT_FILENO, &output) == 0 && input.st_rdev == output.st_rdev;
}

TerminalLoan::TerminalLoan() : lent_(HasTerminal()) {
    if (lent_) {
        NewtSuspend();
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
        NewtResume();
    }
}

}  // namespace platform::host
