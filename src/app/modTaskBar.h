#pragma once

#include "platform/Handle.h"

// Gives a window a button in the task bar, or takes it away. The window is hidden and shown again for that, which makes
// it active once more.
void ShowInTaskBar(platform::Handle hWnd, bool show);
