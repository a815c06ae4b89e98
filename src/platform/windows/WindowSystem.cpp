#include "platform/WindowSystem.h"

#include <utility>

#include "platform/windows/EventFailure.h"
#include "platform/windows/Win32.h"
#include "platform/windows/Window.h"

namespace platform {

namespace {

// The window of the innermost modal show.
HWND modalWindow = nullptr;

HWND WindowOf(Handle window) {
    return windows::SystemHandleOf<HWND>(window);
}

// Keys that lead the focus from control to control belong to the window as a whole.
void MessageServe(MSG& message) {
    const HWND top = ::GetAncestor(message.hwnd, GA_ROOT);
    if (windows::Window::Find(top) == nullptr || !::IsDialogMessageW(top, &message)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    windows::EventFailureThrow();
}

class ModalShow {
public:
    explicit ModalShow(HWND window) : outer_(std::exchange(modalWindow, window)) {}
    ~ModalShow() { modalWindow = outer_; }
    ModalShow(const ModalShow&) = delete;
    ModalShow& operator=(const ModalShow&) = delete;

private:
    HWND outer_;
};

// While another program is active none of this thread's windows is, and the box must keep the user from the modal one
// all the same.
HWND MessageBoxOwner() {
    const HWND active = ::GetActiveWindow();
    return active != nullptr || !::IsWindowVisible(modalWindow) ? active : modalWindow;
}

template <typename Operation>
void WithWindow(Handle window, Operation&& operation) {
    if (const auto found = windows::Window::Find(WindowOf(window))) {
        operation(*found);
    }
}

}  // namespace

Handle WindowCreate(const WindowDesign& design, WindowEvents events) {
    return windows::HandleOf(windows::Window::Create(design, std::move(events)));
}

void WindowShowModal(Handle window) {
    const HWND shown = WindowOf(window);
    const ModalShow modal(shown);
    WithWindow(window, [](windows::Window& found) { found.ShowFirst(); });
    windows::EventFailureThrow();
    MSG message;
    while (windows::Window::Find(shown) != nullptr && ::IsWindowVisible(shown)) {
        if (::GetMessageW(&message, nullptr, 0, 0) <= 0) {
            ::PostQuitMessage(0);
            return;
        }
        MessageServe(message);
    }
    windows::EventFailureThrow();
}

void WindowDestroy(Handle window) noexcept {
    if (windows::Window::Find(WindowOf(window)) != nullptr) {
        ::DestroyWindow(WindowOf(window));
    }
}

void ControlCaption(Handle window, std::size_t control, const std::u16string& caption) {
    WithWindow(window, [&](windows::Window& found) { found.Caption(control, caption); });
}

void ControlToolTip(Handle window, std::size_t control, const std::u16string& text) {
    WithWindow(window, [&](windows::Window& found) { found.ToolTip(control, text); });
}

void ControlColours(Handle window, std::size_t control, Colour background, Colour text) {
    WithWindow(window, [&](windows::Window& found) { found.Colours(control, background, text); });
}

void ControlVisible(Handle window, std::size_t control, bool visible) {
    WithWindow(window, [&](windows::Window& found) { found.Visible(control, visible); });
}

void ControlPlace(Handle window, std::size_t control, const Rectangle& place) {
    WithWindow(window, [&](windows::Window& found) { found.Place(control, place); });
}

Size WindowOuterSize(Handle window) {
    RECT frame{};
    ::GetWindowRect(WindowOf(window), &frame);
    return {windows::TwipsFromDots(frame.right - frame.left), windows::TwipsFromDots(frame.bottom - frame.top)};
}

void WindowOuterSize(Handle window, Size size) {
    ::SetWindowPos(WindowOf(window), nullptr, 0, 0, windows::DotsFromTwips(size.width),
                   windows::DotsFromTwips(size.height), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

Handle GetDesktopWindow() {
    return windows::HandleOf(::GetDesktopWindow());
}

bool LockWindowUpdate(Handle window) {
    return ::LockWindowUpdate(WindowOf(window)) != FALSE;
}

bool ShowWindow(Handle window, std::int32_t command) {
    return ::ShowWindow(WindowOf(window), command) != FALSE;
}

std::int32_t GetWindowLongA(Handle window, std::int32_t index) {
    return ::GetWindowLongA(WindowOf(window), index);
}

std::int32_t SetWindowLongA(Handle window, std::int32_t index, std::int32_t number) {
    return ::SetWindowLongA(WindowOf(window), index, number);
}

std::int32_t MessageBoxW(const std::u16string& text, const std::u16string& caption, std::uint32_t type) {
    const std::int32_t answer = ::MessageBoxW(MessageBoxOwner(), windows::Wide(text), windows::Wide(caption), type);
    windows::EventFailureThrow();
    return answer;
}

void MessageBeep() {
    ::MessageBeep(MB_OK);
}

void DoEvents() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        MessageServe(message);
    }
}

}  // namespace platform
