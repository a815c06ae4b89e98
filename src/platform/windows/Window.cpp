#include "platform/windows/Window.h"

#include <map>
#include <utility>

#include "platform/ScopeExit.h"
#include "platform/windows/EventFailure.h"

namespace platform::windows {

namespace {

constexpr const wchar_t* ClassName = L"VTV4V";

// Control IDs start above IDOK, IDCANCEL and other predefined ones. As a result, Escape does nothing.
constexpr std::size_t FirstControl = 100;

// Wider tooltips are wrapped.
constexpr std::int32_t ToolTipWidth = 4500;  // in twips

constexpr DWORD FixedStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD SizableStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

using Windows = std::map<HWND, std::shared_ptr<Window>>;

Windows& AllWindows() {
    static Windows windows;
    return windows;
}

}  // namespace

void Window::ClassRegister() {
    static const ATOM registered = [] {
        const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
        ::InitCommonControlsEx(&controls);
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof windowClass;
        windowClass.lpfnWndProc = Procedure;
        windowClass.hInstance = ::GetModuleHandleW(nullptr);
        windowClass.hCursor = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // IDC_ARROW
        windowClass.hbrBackground = ::GetSysColorBrush(COLOR_BTNFACE);
        windowClass.lpszClassName = ClassName;
        return ::RegisterClassExW(&windowClass);
    }();
    static_cast<void>(registered);
}

HWND Window::Create(const WindowDesign& design, WindowEvents events) {
    ClassRegister();
    const DWORD style = design.sizable ? SizableStyle : FixedStyle;
    RECT frame{0, 0, PixelsFromTwips(design.client.width), PixelsFromTwips(design.client.height)};
    ::AdjustWindowRectEx(&frame, style, FALSE, 0);
    Owned<HWND, ::DestroyWindow> window(::CreateWindowExW(
        0, ClassName, Wide(design.caption), style, CW_USEDEFAULT, CW_USEDEFAULT, frame.right - frame.left,
        frame.bottom - frame.top, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr));
    if (window != nullptr) {
        AllWindows().emplace(window.get(), std::make_shared<Window>(window.get(), design, std::move(events)));
    }
    return window.release();  // the user owns the window now and may close it
}

std::shared_ptr<Window> Window::Find(HWND window) {
    const auto found = AllWindows().find(window);
    return found == AllWindows().end() ? nullptr : found->second;
}

Window::Window(HWND window, const WindowDesign& design, WindowEvents events)
    : window_(window),
      events_(std::move(events)),
      icon_(ProgramIcon(design.icon)),
      font_(ControlFont(design.font, false)),
      boldFont_(ControlFont(design.font, true)) {
    ::SendMessageW(window_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon_.get()));
    for (std::size_t index = 0; index < design.controls.size(); ++index) {
        const Control& control = design.controls[index];
        controls_.push_back({control.kind, CreateControl(control, index), nullptr, 0});
        if (focused_ == nullptr && control.kind == ControlKind::Button) {
            focused_ = controls_.back().window;
        }
    }
    toolTips_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window_, nullptr,
                                  ::GetModuleHandleW(nullptr), nullptr);
    ::SendMessageW(toolTips_, TTM_SETMAXTIPWIDTH, 0, PixelsFromTwips(ToolTipWidth));
}

HWND Window::CreateControl(const Control& control, std::size_t index) {
    const bool isButton = control.kind == ControlKind::Button;
    // WS_CLIPSIBLINGS: if two controls overlap, the earlier one is in front.
    const DWORD style = WS_CHILD | WS_CLIPSIBLINGS | (control.visible ? WS_VISIBLE : 0) |
                        (isButton ? WS_TABSTOP | BS_PUSHBUTTON | BS_NOTIFY : SS_LEFT | SS_NOPREFIX);
    const HWND child =
        ::CreateWindowExW(0, isButton ? L"BUTTON" : L"STATIC", Wide(control.caption), style,
                          PixelsFromTwips(control.bounds.left), PixelsFromTwips(control.bounds.top),
                          PixelsFromTwips(control.bounds.width), PixelsFromTwips(control.bounds.height), window_,
                          reinterpret_cast<HMENU>(FirstControl + index), ::GetModuleHandleW(nullptr), nullptr);
    const HFONT font = control.bold ? boldFont_.get() : font_.get();
    ::SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return child;
}

// Calls ShowWindow twice. The parent process's STARTUPINFO may override the first call in a process, so that the window
// opens maximised or stays hidden. The second call always takes effect and gives a non-resizable window its own size.
void Window::ShowFirst() {
    const bool sizable = (::GetWindowLongW(window_, GWL_STYLE) & WS_THICKFRAME) != 0;
    const int command = sizable ? SW_SHOW : SW_SHOWNORMAL;
    ::ShowWindow(window_, command);
    ::ShowWindow(window_, command);
}

void Window::Caption(std::size_t control, const std::u16string& caption) {
    ::SetWindowTextW(controls_.at(control).window, Wide(caption));
}

void Window::ToolTip(std::size_t control, const std::u16string& text) {
    std::u16string buffer = text;
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_SUBCLASS | TTF_IDISHWND;
    tool.hwnd = window_;
    tool.uId = reinterpret_cast<UINT_PTR>(controls_.at(control).window);
    tool.lpszText = Wide(buffer);
    ::SendMessageW(toolTips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void Window::Colours(std::size_t control, Colour background, Colour text) {
    ControlState& state = controls_.at(control);
    state.background.reset(::CreateSolidBrush(static_cast<COLORREF>(background)));
    state.textColour = static_cast<COLORREF>(text);
    ::InvalidateRect(state.window, nullptr, TRUE);
}

void Window::Visible(std::size_t control, bool visible) {
    ::ShowWindow(controls_.at(control).window, visible ? SW_SHOWNA : SW_HIDE);
}

void Window::Bounds(std::size_t control, const Rectangle& bounds) {
    const HWND child = controls_.at(control).window;
    ::MoveWindow(child, PixelsFromTwips(bounds.left), PixelsFromTwips(bounds.top), PixelsFromTwips(bounds.width),
                 PixelsFromTwips(bounds.height), TRUE);
    ::InvalidateRect(child, nullptr, TRUE);
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // Keeps the object alive, since an event handler may destroy its own window.
    const std::shared_ptr<Window> found = Find(window);
    return found != nullptr ? found->Handle(message, wParam, lParam)
                            : ::DefWindowProcW(window, message, wParam, lParam);
}

LRESULT Window::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SHOWWINDOW:
            if (wParam == FALSE) {
                WakeModalLoop();
            }
            break;
        case WM_ACTIVATE: {
            const LRESULT result = ::DefWindowProcW(window_, message, wParam, lParam);
            if (LOWORD(wParam) != WA_INACTIVE) {
                InvokeHandler(events_.activated);
            }
            return result;
        }
        case WM_SETFOCUS:
            if (focused_ != nullptr) {
                ::SetFocus(focused_);
            }
            return 0;
        case WM_SIZE:
            if (wParam != SIZE_MINIMIZED) {
                InvokeHandler(events_.resized);
            }
            return 0;
        case WM_COMMAND: return HandleCommand(wParam);
        case WM_CLOSE:
            closePending_ = inClickHandler_;
            if (closePending_) {
                return 0;
            }
            break;
        case WM_QUERYENDSESSION: return shutdownBlocked_ ? FALSE : TRUE;
        case WM_CTLCOLORSTATIC: return LabelColour(wParam, lParam);
        case DM_GETDEFID:
            // Makes Enter press the focused button, as Space does. The window itself has no default button.
            return MAKELRESULT(::GetDlgCtrlID(focused_), focused_ != nullptr ? DC_HASDEFID : 0);
        case WM_NEXTDLGCTL:
            // IsDialogMessageW may send this for an arrow key; DefWindowProcW ignores it.
            if (LOWORD(lParam) != FALSE && wParam != 0) {
                ::SetFocus(reinterpret_cast<HWND>(wParam));
            }
            return 0;
        case WM_NCDESTROY:
            AllWindows().erase(window_);
            WakeModalLoop();
            break;
        default: break;
    }
    return ::DefWindowProcW(window_, message, wParam, lParam);
}

LRESULT Window::HandleCommand(WPARAM wParam) {
    const std::size_t control = LOWORD(wParam) - FirstControl;
    if (LOWORD(wParam) < FirstControl || control >= controls_.size() ||
        controls_[control].kind != ControlKind::Button) {
        return 0;
    }
    if (HIWORD(wParam) == BN_SETFOCUS) {
        focused_ = controls_[control].window;
    } else if ((HIWORD(wParam) == BN_CLICKED || HIWORD(wParam) == BN_DOUBLECLICKED) && events_.clicked) {
        // The second of two quick presses arrives as a double click and counts as a click.
        Clicked(control);
    }
    return 0;
}

void Window::Clicked(std::size_t control) {
    {
        const bool isNested = std::exchange(inClickHandler_, true);
        const ScopeExit left([&] { inClickHandler_ = isNested; });
        InvokeHandler([&] { events_.clicked(control); });
    }
    if (closePending_ && !inClickHandler_) {
        ::DestroyWindow(window_);
    }
}

LRESULT Window::LabelColour(WPARAM wParam, LPARAM lParam) {
    const HWND child = reinterpret_cast<HWND>(lParam);
    for (const ControlState& control : controls_) {
        if (control.window == child && control.background != nullptr) {
            const HDC drawing = reinterpret_cast<HDC>(wParam);
            ::SetTextColor(drawing, control.textColour);
            ::SetBkMode(drawing, TRANSPARENT);
            return reinterpret_cast<LRESULT>(control.background.get());
        }
    }
    return ::DefWindowProcW(window_, WM_CTLCOLORSTATIC, wParam, lParam);
}

}  // namespace platform::windows
