#include "Desktop.h"

#include <doctest/doctest.h>

bool Eventually(const std::function<bool()>& condition) {
    const ULONGLONG end = ::GetTickCount64() + 10000;
    while (!condition()) {
        if (::GetTickCount64() > end) {
            return false;
        }
        ::Sleep(20);
    }
    return true;
}

bool StillAfterAWhile(const std::function<bool()>& condition) {
    ::Sleep(700);
    return condition();
}

std::array<int, 4> Place(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    ::MapWindowPoints(nullptr, ::GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&place), 2);
    return {place.left, place.top, place.right - place.left, place.bottom - place.top};
}

// Asked by a message: the system's own copy of the text is that of a window's creation.
std::string Caption(HWND window) {
    std::string caption(32768, '\0');
    caption.resize(static_cast<std::size_t>(
        ::SendMessageA(window, WM_GETTEXT, caption.size(), reinterpret_cast<LPARAM>(caption.data()))));
    return caption;
}

std::vector<HWND> Parts(HWND window) {
    std::vector<HWND> parts;
    for (HWND part = ::GetWindow(window, GW_CHILD); part != nullptr; part = ::GetWindow(part, GW_HWNDNEXT)) {
        if (::IsWindowVisible(part)) {
            parts.push_back(part);
        }
    }
    return parts;
}

HWND Focus(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus;
}

std::string ToolTip() {
    HWND toolTip = nullptr;
    do {
        toolTip = ::FindWindowExA(nullptr, toolTip, TOOLTIPS_CLASSA, nullptr);
    } while (toolTip != nullptr && !::IsWindowVisible(toolTip));
    return toolTip == nullptr ? "" : Caption(toolTip);
}

HWND Shown(const char* title) {
    HWND window = nullptr;
    REQUIRE(Eventually([&] {
        window = ::FindWindowA(nullptr, title);
        return ::IsWindowVisible(window);
    }));
    return window;
}

// A box is ready once it has given one of its buttons the focus.
HWND Box() {
    HWND box = nullptr;
    REQUIRE(Eventually([&] {
        box = ::FindWindowA("#32770", nullptr);
        return ::IsWindowVisible(box) && ::IsChild(box, Focus(box));
    }));
    return box;
}

// What the button itself tells its box: a box that is not in front misses a click, and a program that ended meanwhile
// may have left another window there.
void Answer(HWND box, int button) {
    ::PostMessageA(box, button == CloseBox ? WM_CLOSE : WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(box, button)));
    CHECK(Eventually([&] { return !::IsWindow(box); }));
}
