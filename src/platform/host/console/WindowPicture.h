#pragma once

#include <string>
#include <vector>

#include "platform/host/console/Painting.h"
#include "platform/host/console/WindowTable.h"

// A window as it is shown on a terminal, and what is told beside it.
namespace platform::host {

// Frame and controls where their twips put them. A cell stands for 80 by 220 twips, the proportions of a terminal's
// characters; a window that is too wide for the terminal is drawn narrower, one that is a little too high, lower.
TextScreen WindowPicture(const HostWindow& window, const Canvas& canvas);

// One short line: what can be typed at the window.
std::u16string WindowHint(const HostWindow& window);
// The same in full, with every button that can be clicked.
std::u16string WindowChoices(const HostWindow& window);

// The tool tips of all controls that are shown, each behind the control it belongs to.
std::vector<std::u32string> ToolTipLines(const HostWindow& window, const Canvas& canvas);

}  // namespace platform::host
