#include "Desktop.h"

#include <commctrl.h>
#include <doctest/doctest.h>

#include <cstring>
#include <fstream>

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

bool IsShownToolTip(HWND window) {
    return ::IsWindowVisible(window) && ClassName(window) == TOOLTIPS_CLASSA;
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

Dots ScreenPlace(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return {place.left, place.top, place.right - place.left, place.bottom - place.top};
}

Dots Place(HWND child) {
    POINT corner{};
    ::ClientToScreen(::GetParent(child), &corner);
    const Dots place = ScreenPlace(child);
    return {place.left - corner.x, place.top - corner.y, place.width, place.height};
}

// Asked by a message: the system's own copy of the text is that of a window's creation.
std::string Caption(HWND window) {
    std::string caption(32768, '\0');
    DWORD_PTR length = 0;
    ::SendMessageTimeoutA(window, WM_GETTEXT, caption.size(), reinterpret_cast<LPARAM>(caption.data()), SMTO_NORMAL,
                          Patience, &length);
    return caption.substr(0, std::strlen(caption.c_str()));
}

std::vector<HWND> Children(HWND window, const std::string& className) {
    std::vector<HWND> children;
    ::EnumChildWindows(window, WindowFound, reinterpret_cast<LPARAM>(&children));
    std::erase_if(children, [&](HWND child) {
        return !::IsWindowVisible(child) || (!className.empty() && ClassName(child) != className);
    });
    return children;
}

HWND Focus(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus;
}

void Point(HWND window) {
    const Dots place = ScreenPlace(window);
    ::SetCursorPos(place.left + place.width / 2, place.top + place.height / 2);
}

void Click(HWND button) {
    ::PostMessageA(button, BM_CLICK, 0, 0);
}

void DoubleClick(HWND button) {
    ::PostMessageA(button, WM_LBUTTONDBLCLK, MK_LBUTTON, 0);
    ::PostMessageA(button, WM_LBUTTONUP, 0, 0);
}

void Press(HWND focused, WPARAM key) {
    ::PostMessageA(focused, WM_KEYDOWN, key, 0);
    ::PostMessageA(focused, WM_KEYUP, key, 0);
}

void CloseByFrame(HWND window) {
    ::PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

std::vector<DWORD> Picture(const Dots& part, LPCSTR icon) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), part.width, -part.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* dots = nullptr;
    const HDC screen = ::GetDC(nullptr);
    const HDC drawing = ::CreateCompatibleDC(screen);
    const HBITMAP bitmap = ::CreateDIBSection(drawing, &info, DIB_RGB_COLORS, &dots, nullptr, 0);
    ::SelectObject(drawing, bitmap);
    ::BitBlt(drawing, 0, 0, part.width, part.height, screen, part.left, part.top, SRCCOPY);
    if (icon != nullptr) {
        const RECT all{0, 0, part.width, part.height};
        ::SetDCBrushColor(drawing, ::GetPixel(drawing, 0, 0));
        ::FillRect(drawing, &all, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
        ::DrawIconEx(drawing, 0, 0, ::LoadIconA(nullptr, icon), part.width, part.height, 0, nullptr, DI_NORMAL);
    }
    ::GdiFlush();
    std::vector<DWORD> picture(static_cast<std::size_t>(part.width * part.height));
    std::memcpy(picture.data(), dots, picture.size() * sizeof(DWORD));
    for (DWORD& dot : picture) {
        dot &= 0xFFFFFF;
    }
    ::DeleteDC(drawing);
    ::DeleteObject(bitmap);
    ::ReleaseDC(nullptr, screen);
    return picture;
}

void Screenshot(const std::string& name) {
    char folder[MAX_PATH];
    if (::GetEnvironmentVariableA("VTV4V_SCREENSHOTS", folder, MAX_PATH) == 0) {
        return;
    }
    ::Sleep(AWhile);
    const Dots all{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    const std::vector<DWORD> screen = Picture(all);
    const BITMAPINFOHEADER info{sizeof info, all.width, -all.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const DWORD head = sizeof(BITMAPFILEHEADER) + sizeof info;
    const DWORD size = static_cast<DWORD>(screen.size() * sizeof(DWORD));
    const BITMAPFILEHEADER file{0x4D42, head + size, 0, 0, head};  // "BM"
    std::ofstream out(std::string(folder) + "\\" + name + ".bmp", std::ios::binary);
    out.write(reinterpret_cast<const char*>(&file), sizeof file);
    out.write(reinterpret_cast<const char*>(&info), sizeof info);
    out.write(reinterpret_cast<const char*>(screen.data()), static_cast<std::streamsize>(size));
}

std::string ClipboardContent() {
    REQUIRE(Eventually([] { return ::OpenClipboard(nullptr) != FALSE; }));
    std::string content;
    if (const HANDLE memory = ::GetClipboardData(CF_TEXT)) {
        content = static_cast<const char*>(::GlobalLock(memory));
        ::GlobalUnlock(memory);
    }
    ::CloseClipboard();
    return content;
}

void ClipboardContent(const std::string& text) {
    const HWND owner = ::CreateWindowExA(0, "STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    REQUIRE(Eventually([&] { return ::OpenClipboard(owner) != FALSE; }));
    ::EmptyClipboard();
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    std::memcpy(::GlobalLock(memory), text.c_str(), text.size() + 1);
    ::GlobalUnlock(memory);
    ::SetClipboardData(CF_TEXT, memory);
    ::CloseClipboard();
    ::DestroyWindow(owner);
}

Program::Program(const std::string& commandLine) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    std::string buffer = commandLine;
    REQUIRE(
        ::CreateProcessA(nullptr, buffer.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process_));
}

Program::~Program() {
    ::TerminateProcess(process_.hProcess, 1);
    ::WaitForSingleObject(process_.hProcess, Patience);
    ::CloseHandle(process_.hProcess);
    ::CloseHandle(process_.hThread);
}

std::vector<HWND> Program::TopWindows() const {
    std::vector<HWND> windows;
    ::EnumWindows(WindowFound, reinterpret_cast<LPARAM>(&windows));
    std::erase_if(windows, [this](HWND window) {
        DWORD process = 0;
        ::GetWindowThreadProcessId(window, &process);
        return process != process_.dwProcessId;
    });
    return windows;
}

std::vector<HWND> Program::Windows() const {
    std::vector<HWND> windows = TopWindows();
    std::erase_if(windows, [](HWND window) { return !::IsWindowVisible(window) || IsShownToolTip(window); });
    return windows;
}

HWND Program::Found(const std::function<bool(HWND)>& isWanted) const {
    HWND found = nullptr;
    Eventually([&] {
        for (const HWND window : Windows()) {
            found = isWanted(window) ? window : found;
        }
        return found != nullptr;
    });
    REQUIRE(found != nullptr);
    return found;
}

HWND Program::Window(const std::string& title) const {
    return Found([&](HWND window) { return Caption(window) == title; });
}

// A box is ready once it has given one of its buttons the focus.
HWND Program::Box() const {
    return Found([](HWND window) { return ClassName(window) == "#32770" && ::IsChild(window, Focus(window)); });
}

std::string Program::ToolTip() const {
    for (const HWND window : TopWindows()) {
        if (IsShownToolTip(window)) {
            return Caption(window);
        }
    }
    return {};
}

std::optional<DWORD> Program::Ended() const {
    DWORD code = 0;
    if (::WaitForSingleObject(process_.hProcess, Patience) != WAIT_OBJECT_0 ||
        !::GetExitCodeProcess(process_.hProcess, &code)) {
        return {};
    }
    return code;
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
