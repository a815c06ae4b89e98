#pragma once

#include <optional>

#include "platform/WindowSystem.h"

// The terminal on which the user sees and operates the windows.
namespace platform::host {

// True if standard input and output are the same terminal.
bool HasTerminal();

// True if windows can be drawn on the terminal.
bool CanDraw();

// Returns the outer size, in twips, of a window that fills the terminal, or nothing if windows can't be drawn.
std::optional<Size> ScreenSize();

// Starts and stops drawing. EndScreen restores the terminal; if a signal kills the process first, a handler does.
void BeginScreen();
void EndScreen();

// Clears the screen and adopts the terminal's size.
void ResizeScreen();

// Makes SIGWINCH interrupt the next wait for a key. newt's mouse support undoes this at the end of each wait.
void WatchScreenSize();

// Hands the terminal to another program until ResumeWindows is called. Meanwhile ignores SIGINT and SIGQUIT, which come
// from keys meant for that program. Delays SIGHUP and SIGTERM: if we exited first, the program would lose the terminal,
// and the user might lose the text being edited.
void SuspendWindows();
void ResumeWindows();

}  // namespace platform::host
