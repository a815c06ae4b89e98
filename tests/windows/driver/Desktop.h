#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "platform/windows/Win32.h"

// The desktop as a person sees it. Nothing here knows the program. Texts are in the system's 8-bit code page.

// Waits until `condition` holds; false when it still does not after ten seconds.
bool Eventually(const std::function<bool()>& condition);
// Waits long enough for something to have happened that must not, and gives what `condition` says then.
bool StillAfterAWhile(const std::function<bool()>& condition);

// Left, top, width and height of a window on the screen, or in the client area of the window that it is a part of.
std::array<int, 4> Place(HWND window);
std::string Caption(HWND window);
// The visible parts, in the order of the tab key.
std::vector<HWND> Parts(HWND window);
// The window with the keyboard focus in the thread of `window`.
HWND Focus(HWND window);
// The text of the tool tip that is shown; empty when none is.
std::string ToolTip();

// The window of that title, and the message box that is ready to be answered. Both are waited for.
HWND Shown(const char* title);
HWND Box();
// Answers a box by one of its buttons, IDYES and its like, or by its close box, and waits until it is gone.
constexpr int CloseBox = 0;
void Answer(HWND box, int button);
