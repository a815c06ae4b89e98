#pragma once

#include <doctest/doctest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "platform/windows/Win32.h"

// Observes and controls the windows on the desktop, independently of the program. Strings are in the system's 8-bit
// code page.

// Waits until `condition` is true. Returns false after a minute, which is long enough for a busy machine.
inline bool Eventually(const std::function<bool()>& condition) {
    const ULONGLONG end = ::GetTickCount64() + 60000;
    while (!condition()) {
        if (::GetTickCount64() > end) {
            return false;
        }
        ::Sleep(20);
    }
    return true;
}

// Waits long enough for an unwanted effect to show up, then returns `condition()`.
inline bool StaysTrue(const std::function<bool()>& condition) {
    ::Sleep(700);
    return condition();
}

// Returns left, top, width and height of a window, relative to the screen or to the client area of its parent.
inline std::array<int, 4> Bounds(HWND window) {
    RECT bounds{};
    ::GetWindowRect(window, &bounds);
    ::MapWindowPoints(nullptr, ::GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&bounds), 2);
    return {bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top};
}

// Sends WM_GETTEXT, since GetWindowText doesn't return the text of another process's control.
inline std::string Caption(HWND window) {
    std::string caption(32768, '\0');
    caption.resize(static_cast<std::size_t>(
        ::SendMessageA(window, WM_GETTEXT, caption.size(), reinterpret_cast<LPARAM>(caption.data()))));
    return caption;
}

// Returns the visible child windows in tab order.
inline std::vector<HWND> Children(HWND window) {
    std::vector<HWND> children;
    for (HWND child = ::GetWindow(window, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (::IsWindowVisible(child)) {
            children.push_back(child);
        }
    }
    return children;
}

// Returns the window with the keyboard focus in the thread of `window`.
inline HWND Focus(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus;
}

// Returns the text of the visible tool tip, or an empty string.
inline std::string ToolTip() {
    HWND toolTip = nullptr;
    do {
        toolTip = ::FindWindowExA(nullptr, toolTip, TOOLTIPS_CLASSA, nullptr);
    } while (toolTip != nullptr && !::IsWindowVisible(toolTip));
    return toolTip == nullptr ? "" : Caption(toolTip);
}

// Waits for the window with this class and title. Null matches any class or title.
inline HWND WaitForWindow(const char* className, const char* title) {
    HWND window = nullptr;
    REQUIRE(Eventually([&] {
        window = ::FindWindowA(className, title);
        return ::IsWindowVisible(window);
    }));
    return window;
}

// Waits for a message box. It is ready once one of its buttons has the focus.
inline HWND WaitForBox() {
    const HWND box = WaitForWindow("#32770", nullptr);
    REQUIRE(Eventually([&] { return ::IsChild(box, Focus(box)); }));
    return box;
}
