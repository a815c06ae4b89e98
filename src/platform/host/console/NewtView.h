#pragma once

#include <memory>
#include <optional>

#include "platform/host/console/Dialog.h"

// What newt does for us on a terminal.
namespace platform::host {

// Draws the dialog where standard input and output are one terminal that can be drawn on; null elsewhere.
std::unique_ptr<DialogView> NewtShow(const Dialog& dialog);

// The outer size, in twips, of a window that fills the terminal; nothing where newt does not draw.
std::optional<Size> NewtScreenSize();

// Leaves the terminal as it was before the first dialog, until NewtResume draws all dialogs again.
void NewtSuspend();
void NewtResume();

}  // namespace platform::host
