#pragma once

#include <sys/types.h>

// Who holds the terminal: the front end, or a program that was started from it and that a person now works in.
namespace platform::host {

// True when the front end talks to a person: standard input is a terminal that we hold in the foreground.
bool TerminalHeld();

// Lends the terminal to the process group of a program that was just started; the front end takes it back, waiting for
// that program to end or stop, before it next reads a line. Passed over when no terminal is held.
void TerminalLend(pid_t processGroup);

}  // namespace platform::host
