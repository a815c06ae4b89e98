#pragma once

#include "platform/Handle.h"

// Adds a window to the taskbar or removes it. To do so, hides the window and shows it again, which activates it.
void ShowInTaskBar(platform::Handle hWnd, bool show);
