#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/WindowSystem.h"

// The windows of this process, and which of them is active.
namespace platform::host {

struct HostControl {
    Control design;
    std::u16string toolTip = {};
    std::optional<Colour> background = {};
    std::optional<Colour> text = {};
};

struct HostWindow {
    std::u16string caption;
    bool sizable;
    Size outer;  // twips
    std::vector<HostControl> controls;
    WindowEvents events;
    bool visible = false;
    bool sizeTold = false;  // the owner learns the first size when the window comes up
    std::map<std::int32_t, std::int32_t> longs = {};
};

// What the frame adds to the client area, in twips: that of Windows' classic look at 96 dots to the inch.
Size FrameOf(bool sizable);
Size ClientOf(const HostWindow& window);

// The controls that are buttons, in the order of their numbers.
std::vector<std::size_t> ButtonsOf(const HostWindow& window);

Handle WindowAdd(HostWindow window);
// Null for a window that is gone. The pointer holds until a window is removed.
HostWindow* WindowOf(Handle window);
void WindowRemove(Handle window);
bool WindowShown(Handle window);

// The window that has the focus, 0 for none.
Handle ActiveWindow();
// Gives a window that is shown the focus and tells its owner; another one is passed over.
void WindowActivate(Handle window);
void WindowDeactivate(Handle window);

}  // namespace platform::host
