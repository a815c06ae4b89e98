#include "Desktop.h"

#include <commctrl.h>

#include <array>
#include <cstring>
#include <fstream>

namespace {

constexpr DWORD Patience = 10000;  // milliseconds
constexpr DWORD Pause = 20;
constexpr DWORD AWhile = 700;
constexpr wchar_t BoxClass[] = L"#32770";

struct WindowSearch {
    DWORD process;
    std::vector<HWND> found;
};

BOOL CALLBACK TopWindowFound(HWND window, LPARAM parameter) {
    WindowSearch& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process == search.process && ::IsWindowVisible(window)) {
        search.found.push_back(window);
    }
    return TRUE;
}

BOOL CALLBACK ToolTipsFound(HWND window, LPARAM parameter) {
    WindowSearch& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process == search.process && ClassName(window) == TOOLTIPS_CLASSW) {
        search.found.push_back(window);
    }
    return TRUE;
}

BOOL CALLBACK ChildFound(HWND window, LPARAM parameter) {
    reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
    return TRUE;
}

// Place and button travel in one input, so that no earlier movement of the mouse comes between them.
void MouseSend(HWND window, DWORD action) {
    constexpr LONG full = 65535;  // the screen's width and height
    RECT place{};
    ::GetWindowRect(window, &place);
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = ::MulDiv((place.left + place.right) / 2, full, ::GetSystemMetrics(SM_CXSCREEN) - 1);
    input.mi.dy = ::MulDiv((place.top + place.bottom) / 2, full, ::GetSystemMetrics(SM_CYSCREEN) - 1);
    input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | action;
    ::SendInput(1, &input, sizeof input);
}

void KeySend(WORD key, DWORD action) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = action;
    ::SendInput(1, &input, sizeof input);
}

// Memory in another process, for messages that point into it.
class RemoteMemory {
public:
    RemoteMemory(HANDLE process, SIZE_T size)
        : process_(process),
          address_(::VirtualAllocEx(process, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)) {}
    ~RemoteMemory() { ::VirtualFreeEx(process_, address_, 0, MEM_RELEASE); }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    [[nodiscard]] void* Address() const { return address_; }
    void Write(const void* bytes, SIZE_T size) const { ::WriteProcessMemory(process_, address_, bytes, size, nullptr); }
    void Read(void* bytes, SIZE_T size) const { ::ReadProcessMemory(process_, address_, bytes, size, nullptr); }

private:
    HANDLE process_;
    void* address_;
};

// A picture in memory, 32 bits a dot, the top row first.
class Picture {
public:
    Picture(int width, int height) : drawing_(::CreateCompatibleDC(nullptr)), width_(width), height_(height) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        bitmap_ = ::CreateDIBSection(drawing_, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&dots_), nullptr, 0);
        ::SelectObject(drawing_, bitmap_);
    }
    ~Picture() {
        ::DeleteDC(drawing_);
        ::DeleteObject(bitmap_);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    void FromScreen(int left, int top) const {
        const HDC screen = ::GetDC(nullptr);
        ::BitBlt(drawing_, 0, 0, width_, height_, screen, left, top, SRCCOPY);
        ::ReleaseDC(nullptr, screen);
        ::GdiFlush();
    }

    void FromIcon(const char* icon, DWORD background) const {
        for (int dot = 0; dot < width_ * height_; ++dot) {
            dots_[dot] = background;
        }
        ::DrawIconEx(drawing_, 0, 0, ::LoadIconA(nullptr, icon), width_, height_, 0, nullptr, DI_NORMAL);
        ::GdiFlush();
    }

    [[nodiscard]] DWORD Dot(int index) const { return dots_[index] & 0xFFFFFF; }

    // The share of dots that are alike, in per cent.
    [[nodiscard]] int Likeness(const Picture& other) const {
        int alike = 0;
        for (int dot = 0; dot < width_ * height_; ++dot) {
            alike += Dot(dot) == other.Dot(dot) ? 1 : 0;
        }
        return alike * 100 / (width_ * height_);
    }

    [[nodiscard]] std::set<COLORREF> Colours() const {
        std::set<COLORREF> colours;
        for (int dot = 0; dot < width_ * height_; ++dot) {
            const DWORD blueLast = Dot(dot);
            colours.insert(RGB(blueLast >> 16, blueLast >> 8, blueLast));
        }
        return colours;
    }

    void Save(const std::string& path) const {
        for (int dot = 0; dot < width_ * height_; ++dot) {
            dots_[dot] |= 0xFF000000;  // opaque
        }
        const DWORD size = static_cast<DWORD>(width_ * height_) * 4;
        BITMAPFILEHEADER file{};
        file.bfType = 0x4D42;  // "BM"
        file.bfOffBits = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
        file.bfSize = file.bfOffBits + size;
        BITMAPINFOHEADER info{};
        info.biSize = sizeof info;
        info.biWidth = width_;
        info.biHeight = -height_;
        info.biPlanes = 1;
        info.biBitCount = 32;
        std::ofstream out(path, std::ios::binary);
        out.write(reinterpret_cast<const char*>(&file), sizeof file);
        out.write(reinterpret_cast<const char*>(&info), sizeof info);
        out.write(reinterpret_cast<const char*>(dots_), static_cast<std::streamsize>(size));
    }

private:
    HDC drawing_;
    HBITMAP bitmap_ = nullptr;
    DWORD* dots_ = nullptr;
    int width_;
    int height_;
};

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

std::wstring Caption(HWND window) {
    std::wstring caption(32768, L'\0');
    // Asked by a message: the system's own copy of the text is that of a window's creation.
    DWORD_PTR length = 0;
    ::SendMessageTimeoutW(window, WM_GETTEXT, caption.size(), reinterpret_cast<LPARAM>(caption.data()), SMTO_NORMAL,
                          Patience, &length);
    return caption.substr(0, length);
}

std::wstring ClassName(HWND window) {
    std::wstring name(256, L'\0');
    name.resize(static_cast<std::size_t>(::GetClassNameW(window, name.data(), static_cast<int>(name.size()))));
    return name;
}

RECT Place(HWND child) {
    RECT place{};
    ::GetWindowRect(child, &place);
    ::MapWindowPoints(nullptr, ::GetParent(child), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

std::vector<HWND> Children(HWND window, const std::wstring& className) {
    std::vector<HWND> children;
    ::EnumChildWindows(window, ChildFound, reinterpret_cast<LPARAM>(&children));
    std::erase_if(children, [&](HWND child) { return ClassName(child) != className; });
    return children;
}

HWND Child(HWND window, const std::wstring& className, const std::wstring& caption) {
    for (const HWND child : Children(window, className)) {
        if (Caption(child) == caption) {
            return child;
        }
    }
    return nullptr;
}

HWND Focus(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus;
}

void Point(HWND window) {
    MouseSend(window, 0);
}

void Click(HWND button) {
    ::PostMessageW(button, BM_CLICK, 0, 0);
}

void ClickByMouse(HWND window) {
    ::Sleep(AWhile);
    MouseSend(window, MOUSEEVENTF_LEFTDOWN);
    MouseSend(window, MOUSEEVENTF_LEFTUP);
}

void Press(WORD key) {
    KeySend(key, 0);
    KeySend(key, KEYEVENTF_KEYUP);
}

void CloseByFrame(HWND window) {
    ::PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

std::set<COLORREF> Colours(HWND window, int height) {
    RECT place{};
    ::GetWindowRect(window, &place);
    const Picture shown(place.right - place.left, height);
    shown.FromScreen(place.left, place.top);
    return shown.Colours();
}

std::optional<std::wstring> ClipboardContent() {
    std::optional<std::wstring> content;
    if (!Eventually([] { return ::OpenClipboard(nullptr) != FALSE; })) {
        return content;
    }
    const HANDLE memory = ::GetClipboardData(CF_TEXT);
    if (memory != nullptr) {
        const char* const text = static_cast<const char*>(::GlobalLock(memory));
        std::wstring wide(32768, L'\0');
        const int size = ::MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), static_cast<int>(wide.size()));
        content = wide.substr(0, static_cast<std::size_t>(size) - 1);
        ::GlobalUnlock(memory);
    }
    ::CloseClipboard();
    return content;
}

void ClipboardContent(const std::string& text) {
    const HWND owner = ::CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    Eventually([&] { return ::OpenClipboard(owner) != FALSE; });
    ::EmptyClipboard();
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    std::memcpy(::GlobalLock(memory), text.c_str(), text.size() + 1);
    ::GlobalUnlock(memory);
    ::SetClipboardData(CF_TEXT, memory);
    ::CloseClipboard();
    ::DestroyWindow(owner);
}

ClipboardHolder::ClipboardHolder(Kind kind) : thread_([this, kind](const std::stop_token& stop) { Hold(stop, kind); }) {
    Eventually([this] { return held_.load(); });
}

void ClipboardHolder::Hold(const std::stop_token& stop, Kind kind) {
    constexpr DWORD moment = 100;
    constexpr DWORD gap = 60;
    while (!stop.stop_requested()) {
        held_ = ::OpenClipboard(nullptr) != FALSE || held_;
        ::Sleep(moment);
        if (kind == Kind::ForMoments) {
            ::CloseClipboard();
            ::Sleep(gap);
        }
    }
    ::CloseClipboard();
}

void Screenshot(const std::string& name) {
    std::array<char, MAX_PATH> folder{};
    if (::GetEnvironmentVariableA("VTV4V_SCREENSHOTS", folder.data(), MAX_PATH) == 0) {
        return;
    }
    ::Sleep(AWhile);
    const Picture screen(::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN));
    screen.FromScreen(0, 0);
    screen.Save(std::string(folder.data()) + "\\" + name + ".bmp");
}

OtherWindow::OtherWindow()
    : window_(::CreateWindowExW(0, L"STATIC", L"Another program", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 500, 400, 200, 100,
                                nullptr, nullptr, nullptr, nullptr)) {
    ::SetForegroundWindow(window_);
}

OtherWindow::~OtherWindow() {
    ::DestroyWindow(window_);
}

bool OtherWindow::Foreground() const {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::DispatchMessageW(&message);
    }
    return ::GetForegroundWindow() == window_;
}

Program::Program(const std::wstring& commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    std::wstring buffer = commandLine;
    if (::CreateProcessW(nullptr, buffer.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        ::CloseHandle(process.hThread);
        process_ = process.hProcess;
        id_ = process.dwProcessId;
    }
}

Program::~Program() {
    ::TerminateProcess(process_, 1);
    ::WaitForSingleObject(process_, Patience);
    ::CloseHandle(process_);
}

std::vector<HWND> Program::Windows() const {
    WindowSearch search{id_, {}};
    ::EnumWindows(TopWindowFound, reinterpret_cast<LPARAM>(&search));
    std::erase_if(search.found, [](HWND window) { return ClassName(window) == TOOLTIPS_CLASSW; });
    return search.found;
}

HWND Program::Window(const std::wstring& title) const {
    HWND found = nullptr;
    Eventually([&] {
        for (const HWND window : Windows()) {
            if (ClassName(window) != BoxClass && Caption(window) == title) {
                found = window;
            }
        }
        return found != nullptr || ::WaitForSingleObject(process_, 0) == WAIT_OBJECT_0;
    });
    return found;
}

std::optional<DWORD> Program::Ended() const {
    DWORD code = 0;
    if (::WaitForSingleObject(process_, Patience) != WAIT_OBJECT_0 || !::GetExitCodeProcess(process_, &code)) {
        return {};
    }
    return code;
}

std::wstring Program::ToolTip(HWND window, HWND child) const {
    struct Content {
        TTTOOLINFOW tool;
        wchar_t text[512];
    };
    WindowSearch search{id_, {}};
    ::EnumWindows(ToolTipsFound, reinterpret_cast<LPARAM>(&search));
    const RemoteMemory memory(process_, sizeof(Content));
    for (const HWND toolTips : search.found) {
        Content content{};
        content.tool.cbSize = TTTOOLINFOW_V2_SIZE;
        content.tool.hwnd = window;
        content.tool.uFlags = TTF_IDISHWND;
        content.tool.uId = reinterpret_cast<UINT_PTR>(child);
        content.tool.lpszText =
            reinterpret_cast<wchar_t*>(static_cast<char*>(memory.Address()) + offsetof(Content, text));
        memory.Write(&content, sizeof content);
        ::SendMessageW(toolTips, TTM_GETTEXTW, 512, reinterpret_cast<LPARAM>(memory.Address()));
        memory.Read(&content, sizeof content);
        if (content.text[0] != L'\0') {
            return content.text;
        }
    }
    return {};
}

Box::Box(const Program& program) {
    Eventually([&] {
        for (const HWND window : program.Windows()) {
            // A box is ready once it has given one of its buttons the focus.
            if (ClassName(window) == BoxClass && ::IsChild(window, Focus(window))) {
                window_ = window;
            }
        }
        return window_ != nullptr;
    });
}

std::wstring Box::Text() const {
    for (const HWND label : Children(window_, L"Static")) {
        const std::wstring text = Caption(label);
        if (!text.empty()) {
            return text;
        }
    }
    return {};
}

std::vector<int> Box::Buttons() const {
    std::vector<int> buttons;
    for (const HWND button : Children(window_, L"Button")) {
        if (::IsWindowVisible(button)) {
            buttons.push_back(::GetDlgCtrlID(button));
        }
    }
    return buttons;
}

int Box::FocusedButton() const {
    return ::GetDlgCtrlID(Focus(window_));
}

BoxIcon Box::Icon() const {
    struct SystemIcon {
        BoxIcon icon;
        const char* name;
    };
    const std::array<SystemIcon, 4> icons = {{{BoxIcon::Question, IDI_QUESTION},
                                              {BoxIcon::Information, IDI_INFORMATION},
                                              {BoxIcon::Critical, IDI_ERROR},
                                              {BoxIcon::Exclamation, IDI_WARNING}}};
    for (const HWND label : Children(window_, L"Static")) {
        if ((::GetWindowLongW(label, GWL_STYLE) & SS_TYPEMASK) != SS_ICON || !::IsWindowVisible(label)) {
            continue;
        }
        RECT place{};
        ::GetWindowRect(label, &place);
        const int width = place.right - place.left;
        const int height = place.bottom - place.top;
        const Picture shown(width, height);
        BoxIcon found = BoxIcon::None;
        Eventually([&] {
            shown.FromScreen(place.left, place.top);
            const Picture drawn(width, height);
            for (const SystemIcon& candidate : icons) {
                drawn.FromIcon(candidate.name, shown.Dot(0));
                if (shown.Likeness(drawn) >= 95) {
                    found = candidate.icon;
                }
            }
            return found != BoxIcon::None;
        });
        return found;
    }
    return BoxIcon::None;
}

// What the button itself tells its box: a box that is not in front misses a click, and a program that ended meanwhile
// may have left another window there.
void Box::Answer(int button) {
    ::PostMessageW(window_, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(window_, button)));
    WaitGone();
}

void Box::Close() {
    CloseByFrame(window_);
    WaitGone();
}

void Box::WaitGone() {
    Eventually([this] { return !::IsWindow(window_); });
}
