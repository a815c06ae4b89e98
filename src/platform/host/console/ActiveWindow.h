#pragma once

#include "platform/Handle.h"

namespace platform::host {

// The window that has the focus, 0 for none.
Handle ActiveWindow();

// Gives a window that is shown the focus and tells its owner; any other is passed over.
void WindowActivate(Handle window);

}  // namespace platform::host
