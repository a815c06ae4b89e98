#pragma once

#include "platform/Handle.h"

// Adds or removes a window's taskbar button. To do so, hides the window and shows it again, which activates it.
void ShowInTaskBar(platform::Handle hWnd, bool show);
