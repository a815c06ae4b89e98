#include "platform/windows/Window.h"

#include <map>
#include <utility>

#include "platform/windows/EventFailure.h"

namespace platform::windows {

namespace {

constexpr const wchar_t* ClassName = L"VTV4V";

// Control identifiers start behind those that the system gives a meaning: IDOK, IDCANCEL and their like. So Escape ends
// nothing.
constexpr std::size_t FirstControl = 100;

// A tool tip wider than that is broken into lines.
constexpr std::int32_t ToolTipWidth = 4500;  // twips

constexpr DWORD FixedStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD SizableStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

using Windows = std::map<HWND, std::shared_ptr<Window>>;

Windows& AllWindows() {
    static Windows windows;
    return windows;
}

// An ampersand would underline the next character of a button's caption.
std::u16string AmpersandsDoubled(const std::u16string& caption) {
    std::u16string doubled;
    for (const char16_t character : caption) {
        doubled.append(character == u'&' ? 2 : 1, character);
    }
    return doubled;
}

std::u16string ShownCaption(ControlKind kind, const std::u16string& caption) {
    return kind == ControlKind::Button ? AmpersandsDoubled(caption) : caption;
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
    RECT frame{0, 0, DotsFromTwips(design.client.width), DotsFromTwips(design.client.height)};
    ::AdjustWindowRectEx(&frame, style, FALSE, 0);
    Owned<HWND, ::DestroyWindow> window(::CreateWindowExW(
        0, ClassName, Wide(design.caption), style, CW_USEDEFAULT, CW_USEDEFAULT, frame.right - frame.left,
        frame.bottom - frame.top, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr));
    if (window != nullptr) {
        AllWindows().emplace(window.get(), std::make_shared<Window>(window.get(), design, std::move(events)));
    }
    return window.release();  // the user's, who may close it
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
    for (std::size_t number = 0; number < design.controls.size(); ++number) {
        const Control& control = design.controls[number];
        controls_.push_back({control.kind, ControlCreate(control, number), false, nullptr, 0});
        if (focused_ == nullptr && control.kind == ControlKind::Button) {
            focused_ = controls_.back().window;
        }
    }
    toolTips_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window_, nullptr,
                                  ::GetModuleHandleW(nullptr), nullptr);
    ::SendMessageW(toolTips_, TTM_SETMAXTIPWIDTH, 0, DotsFromTwips(ToolTipWidth));
}

HWND Window::ControlCreate(const Control& control, std::size_t number) {
    const bool isButton = control.kind == ControlKind::Button;
    // Where two controls lie over one another, the earlier one is in front.
    const DWORD style = WS_CHILD | WS_CLIPSIBLINGS | (control.visible ? WS_VISIBLE : 0) |
                        (isButton ? WS_TABSTOP | BS_PUSHBUTTON | BS_NOTIFY : SS_LEFT | SS_NOPREFIX);
    const std::u16string caption = ShownCaption(control.kind, control.caption);
    const HWND child = ::CreateWindowExW(
        0, isButton ? L"BUTTON" : L"STATIC", Wide(caption), style, DotsFromTwips(control.place.left),
        DotsFromTwips(control.place.top), DotsFromTwips(control.place.width), DotsFromTwips(control.place.height),
        window_, reinterpret_cast<HMENU>(FirstControl + number), ::GetModuleHandleW(nullptr), nullptr);
    const HFONT font = control.bold ? boldFont_.get() : font_.get();
    ::SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return child;
}

// The process' first show obeys whoever started it: the window may come up maximised, or not at all. The second one
// does as it says, and a window without the boxes for other sizes has its own.
void Window::ShowFirst() {
    const bool sizable = (::GetWindowLongW(window_, GWL_STYLE) & WS_THICKFRAME) != 0;
    const int command = sizable ? SW_SHOW : SW_SHOWNORMAL;
    ::ShowWindow(window_, command);
    ::ShowWindow(window_, command);
}

void Window::Caption(std::size_t control, const std::u16string& caption) {
    const std::u16string shown = ShownCaption(controls_.at(control).kind, caption);
    ::SetWindowTextW(controls_.at(control).window, Wide(shown));
}

void Window::ToolTip(std::size_t control, const std::u16string& text) {
    ControlState& state = controls_.at(control);
    std::u16string buffer = text;
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_SUBCLASS | TTF_IDISHWND;
    tool.hwnd = window_;
    tool.uId = reinterpret_cast<UINT_PTR>(state.window);
    tool.lpszText = Wide(buffer);
    ::SendMessageW(toolTips_, state.hasToolTip ? TTM_UPDATETIPTEXTW : TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    state.hasToolTip = true;
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

void Window::Place(std::size_t control, const Rectangle& place) {
    const HWND child = controls_.at(control).window;
    ::MoveWindow(child, DotsFromTwips(place.left), DotsFromTwips(place.top), DotsFromTwips(place.width),
                 DotsFromTwips(place.height), TRUE);
    ::InvalidateRect(child, nullptr, TRUE);
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // Held here because an event may destroy the window that it comes from.
    const std::shared_ptr<Window> found = Find(window);
    return found != nullptr ? found->Handle(message, wParam, lParam)
                            : ::DefWindowProcW(window, message, wParam, lParam);
}

LRESULT Window::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SHOWWINDOW:
            if (wParam == FALSE) {
                ModalLoopWake();
            }
            break;
        case WM_ACTIVATE: {
            const LRESULT result = ::DefWindowProcW(window_, message, wParam, lParam);
            if (LOWORD(wParam) != WA_INACTIVE && events_.activated) {
                EventTell(events_.activated);
            }
            return result;
        }
        case WM_SETFOCUS:
            FocusRestore();
            return 0;
        case WM_SIZE:
            if (wParam != SIZE_MINIMIZED && events_.resized) {
                EventTell(events_.resized);
            }
            return 0;
        case WM_COMMAND:
            return HandleCommand(wParam);
        case WM_CLOSE:
            closeWaits_ = clickRuns_;
            if (closeWaits_) {
                return 0;
            }
            break;
        case WM_CTLCOLORSTATIC:
            return LabelColour(wParam, lParam);
        case DM_GETDEFID:
            // Enter clicks the button with the focus, as Space does; no button is the default of the whole window.
            return MAKELRESULT(::GetDlgCtrlID(focused_), focused_ != nullptr ? DC_HASDEFID : 0);
        case WM_NEXTDLGCTL:
            // IsDialogMessageW may send this for an arrow key; DefWindowProcW ignores it.
            if (LOWORD(lParam) != FALSE && wParam != 0) {
                ::SetFocus(reinterpret_cast<HWND>(wParam));
            }
            return 0;
        case WM_NCDESTROY:
            AllWindows().erase(window_);
            ModalLoopWake();
            break;
        default:
            break;
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
        // The second press of two quick ones is told as a double click, and counts like any other.
        Clicked(control);
    }
    return 0;
}

void Window::Clicked(std::size_t control) {
    const bool outerRuns = std::exchange(clickRuns_, true);
    EventTell([&] { events_.clicked(control); });
    clickRuns_ = outerRuns;
    if (closeWaits_ && !clickRuns_) {
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

void Window::FocusRestore() {
    if (focused_ != nullptr) {
        ::SetFocus(focused_);
    }
}

}  // namespace platform::windows
