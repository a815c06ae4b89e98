#include "platform/host/console/WindowTable.h"

#include <algorithm>
#include <utility>

namespace platform::host {

namespace {

struct Table {
    std::map<Handle, HostWindow> windows;
    Handle last = GetDesktopWindow();
    Handle active = 0;
};

Table& Windows() {
    static Table table;
    return table;
}

}  // namespace

Size FrameOf(bool sizable) {
    return sizable ? Size{120, 405} : Size{90, 375};
}

Size ClientOf(const HostWindow& window) {
    const Size frame = FrameOf(window.sizable);
    return {std::max(window.outer.width - frame.width, 0), std::max(window.outer.height - frame.height, 0)};
}

std::vector<std::size_t> ButtonsOf(const HostWindow& window) {
    std::vector<std::size_t> buttons;
    for (std::size_t control = 0; control < window.controls.size(); ++control) {
        if (window.controls[control].design.kind == ControlKind::Button) {
            buttons.push_back(control);
        }
    }
    return buttons;
}

Handle WindowAdd(HostWindow window) {
    Table& table = Windows();
    table.last += 2;
    table.windows.emplace(table.last, std::move(window));
    return table.last;
}

HostWindow* WindowOf(Handle window) {
    const auto found = Windows().windows.find(window);
    return found == Windows().windows.end() ? nullptr : &found->second;
}

void WindowRemove(Handle window) {
    WindowDeactivate(window);
    // The events' owner may call back while they are released, and finds the window gone.
    const auto removed = Windows().windows.extract(window);
}

bool WindowShown(Handle window) {
    const HostWindow* const found = WindowOf(window);
    return found != nullptr && found->visible;
}

Handle ActiveWindow() {
    return Windows().active;
}

void WindowActivate(Handle window) {
    if (!WindowShown(window)) {
        return;
    }
    Windows().active = window;
    // A copy, because the event may destroy the window that keeps it.
    if (const auto activated = WindowOf(window)->events.activated) {
        activated();
    }
}

void WindowDeactivate(Handle window) {
    if (Windows().active == window) {
        Windows().active = 0;
    }
}

}  // namespace platform::host
