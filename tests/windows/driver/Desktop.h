#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "platform/windows/Win32.h"

// Observes and controls the windows on the desktop, independently of the program. Strings are in the system's 8-bit
// code page.

// Waits until `condition` is true. Returns false after a minute, which is long enough for a busy machine.
bool Eventually(const std::function<bool()>& condition);
// Waits long enough for unwanted effects to show, then returns `condition()`.
bool StaysTrue(const std::function<bool()>& condition);

// Returns a window's left, top, width and height, relative to the screen or to the client area of its parent.
std::array<int, 4> Bounds(HWND window);
std::string Caption(HWND window);
// Returns the visible child windows in tab order.
std::vector<HWND> Children(HWND window);
// Returns the window with the keyboard focus in the thread of `window`.
HWND Focus(HWND window);
// Returns the text of the visible tooltip, or an empty string.
std::string ToolTip();

// Wait for the window with this title, or for a message box that is ready to be answered.
HWND WaitForWindow(const char* title);
HWND WaitForBox();
// Answers a message box with a button (IDYES etc.) or its close box, and waits until the message box has closed.
constexpr int CloseBox = 0;
void AnswerBox(HWND box, int button);
