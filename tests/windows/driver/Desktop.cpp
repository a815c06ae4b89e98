#include "Desktop.h"

#include <commctrl.h>
#include <doctest/doctest.h>

#include <cstring>

namespace {

constexpr DWORD Patience = 10000;  // milliseconds
constexpr DWORD Pause = 20;
constexpr DWORD AWhile = 700;

BOOL CALLBACK WindowFound(HWND window, LPARAM windows) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

std::string ClassName(HWND window) {
    char name[256];
    return {name, static_cast<std::size_t>(::GetClassNameA(window, name, sizeof name))};
}

}  // namespace

bool Eventually(const std::function<bool()>& condition) {
    const ULONGLONG end = ::GetTickCount64() + Patience;
    while (!condition()) {
        if (::GetTickCount64() > end) {
            return false;
        }
        ::Sleep(Pause);
    }
    return true;
}

bool StillAfterAWhile(const std::function<bool()>& condition) {
    ::Sleep(AWhile);
    return condition();
}

Spot Place(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    ::MapWindowPoints(nullptr, ::GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&place), 2);
    return {place.left, place.top, place.right - place.left, place.bottom - place.top};
}

// Asked by a message: the system's own copy of the text is that of a window's creation.
std::string Caption(HWND window) {
    std::string caption(32768, '\0');
    DWORD_PTR length = 0;
    ::SendMessageTimeoutA(window, WM_GETTEXT, caption.size(), reinterpret_cast<LPARAM>(caption.data()), SMTO_NORMAL,
                          Patience, &length);
    return caption.substr(0, std::strlen(caption.c_str()));
}

std::vector<HWND> Parts(HWND window, const std::string& className) {
    std::vector<HWND> parts;
    ::EnumChildWindows(window, WindowFound, reinterpret_cast<LPARAM>(&parts));
    std::erase_if(parts, [&](HWND part) {
        return !::IsWindowVisible(part) || (!className.empty() && ClassName(part) != className);
    });
    return parts;
}

std::vector<HWND> TopWindows(DWORD thread) {
    std::vector<HWND> windows;
    ::EnumThreadWindows(thread, WindowFound, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

HWND Focus(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus;
}

std::string ToolTip(HWND window) {
    for (const HWND top : TopWindows(::GetWindowThreadProcessId(window, nullptr))) {
        if (::IsWindowVisible(top) && ClassName(top) == TOOLTIPS_CLASSA) {
            return Caption(top);
        }
    }
    return {};
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
    if (button == CloseBox) {
        CloseByFrame(box);
    } else {
        ::PostMessageA(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                       reinterpret_cast<LPARAM>(::GetDlgItem(box, button)));
    }
    Eventually([&] { return !::IsWindow(box); });
}

void CloseByFrame(HWND window) {
    ::PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

std::vector<COLORREF> Dots(HWND window) {
    constexpr int step = 3;
    RECT part{};
    ::GetWindowRect(window, &part);
    const HDC screen = ::GetDC(nullptr);
    std::vector<COLORREF> dots;
    for (int y = part.top; y < part.bottom; y += step) {
        for (int x = part.left; x < part.right; x += step) {
            dots.push_back(::GetPixel(screen, x, y));
        }
    }
    ::ReleaseDC(nullptr, screen);
    return dots;
}

ClassText::ClassText(const char* key, const std::string& text) : key_(key) {
    LONG size = sizeof earlier_;
    ::RegQueryValueA(HKEY_CLASSES_ROOT, key_, earlier_, &size);
    REQUIRE(::RegSetValueA(HKEY_CLASSES_ROOT, key_, REG_SZ, text.c_str(), 0) == ERROR_SUCCESS);
}

ClassText::~ClassText() {
    ::RegSetValueA(HKEY_CLASSES_ROOT, key_, REG_SZ, earlier_, 0);
}
