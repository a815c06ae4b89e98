#include "Desktop.h"

#include <doctest/doctest.h>

bool Eventually(const std::function<bool()>& condition) {
    const ULONGLONG end = ::GetTickCount64() + 60000;
    while (!condition()) {
        if (::GetTickCount64() > end) {
            return false;
        }
        ::Sleep(20);
    }
    return true;
}

bool StaysTrue(const std::function<bool()>& condition) {
    ::Sleep(700);
    return condition();
}

std::array<int, 4> Bounds(HWND window) {
    RECT bounds{};
    ::GetWindowRect(window, &bounds);
    ::MapWindowPoints(nullptr, ::GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&bounds), 2);
    return {bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top};
}

// Sends WM_GETTEXT, since GetWindowText doesn't return the text of another process's control.
std::string Caption(HWND window) {
    std::string caption(32768, '\0');
    caption.resize(static_cast<std::size_t>(
        ::SendMessageA(window, WM_GETTEXT, caption.size(), reinterpret_cast<LPARAM>(caption.data()))));
    return caption;
}

std::vector<HWND> Children(HWND window) {
    std::vector<HWND> children;
    for (HWND child = ::GetWindow(window, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (::IsWindowVisible(child)) {
            children.push_back(child);
        }
    }
    return children;
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

HWND WaitForWindow(const char* title) {
    HWND window = nullptr;
    REQUIRE(Eventually([&] {
        window = ::FindWindowA(nullptr, title);
        return ::IsWindowVisible(window);
    }));
    return window;
}

// A box is ready once one of its buttons has the focus.
HWND WaitForBox() {
    HWND box = nullptr;
    REQUIRE(Eventually([&] {
        box = ::FindWindowA("#32770", nullptr);
        return ::IsWindowVisible(box) && ::IsChild(box, Focus(box));
    }));
    return box;
}

// Posts the button's notification rather than a click: a background box would miss a click, and after the program has
// exited the click could land in another window.
void AnswerBox(HWND box, int button) {
    ::PostMessageA(box, button == CloseBox ? WM_CLOSE : WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(box, button)));
    CHECK(Eventually([&] { return !::IsWindow(box); }));
}
