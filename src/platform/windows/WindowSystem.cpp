#include "platform/WindowSystem.h"

#include <memory>
#include <utility>

#include "platform/ScopeExit.h"
#include "platform/windows/EventFailure.h"
#include "platform/windows/Win32.h"
#include "platform/windows/Window.h"

namespace platform {

namespace {

// The window shown by the innermost WindowShowModal call.
HWND modalWindow = nullptr;

HWND WindowOf(Handle window) {
    return windows::SystemHandleOf<HWND>(window);
}

// Dispatches a message. IsDialogMessageW handles the keys that move the focus between controls.
void DispatchToWindow(MSG& message) {
    const HWND top = ::GetAncestor(message.hwnd, GA_ROOT);
    if (windows::Window::Find(top) == nullptr || !::IsDialogMessageW(top, &message)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    windows::RethrowEventFailure();
}

// Returns the window to use as a message box's owner, so that the box disables it. Falls back to the modal window if
// another program is active, because this thread then has no active window.
HWND MessageBoxOwner() {
    const HWND active = ::GetActiveWindow();
    return active != nullptr || !::IsWindowVisible(modalWindow) ? active : modalWindow;
}

std::shared_ptr<windows::Window> WindowObject(Handle window) {
    return windows::Window::Find(WindowOf(window));
}

}  // namespace

Handle WindowCreate(const WindowDesign& design, WindowEvents events) {
    return windows::HandleOf(windows::Window::Create(design, std::move(events)));
}

void WindowShowModal(Handle window) {
    const HWND shown = WindowOf(window);
    const HWND outer = std::exchange(modalWindow, shown);
    const ScopeExit closed([&] { modalWindow = outer; });
    if (const auto found = WindowObject(window)) {
        found->ShowFirst();
    }
    windows::RethrowEventFailure();
    MSG message;
    while (windows::Window::Find(shown) != nullptr && ::IsWindowVisible(shown)) {
        if (::GetMessageW(&message, nullptr, 0, 0) <= 0) {
            ::PostQuitMessage(0);
            return;
        }
        DispatchToWindow(message);
    }
    windows::RethrowEventFailure();
}

void WindowDestroy(Handle window) noexcept {
    if (windows::Window::Find(WindowOf(window)) != nullptr) {
        ::DestroyWindow(WindowOf(window));
    }
}

void ControlCaption(Handle window, std::size_t control, const std::u16string& caption) {
    if (const auto found = WindowObject(window)) {
        found->Caption(control, caption);
    }
}

void ControlToolTip(Handle window, std::size_t control, const std::u16string& text) {
    if (const auto found = WindowObject(window)) {
        found->ToolTip(control, text);
    }
}

void ControlColours(Handle window, std::size_t control, Colour background, Colour text) {
    if (const auto found = WindowObject(window)) {
        found->Colours(control, background, text);
    }
}

void ControlVisible(Handle window, std::size_t control, bool visible) {
    if (const auto found = WindowObject(window)) {
        found->Visible(control, visible);
    }
}

void ControlBounds(Handle window, std::size_t control, const Rectangle& bounds) {
    if (const auto found = WindowObject(window)) {
        found->Bounds(control, bounds);
    }
}

Size WindowOuterSize(Handle window) {
    RECT frame{};
    ::GetWindowRect(WindowOf(window), &frame);
    return {windows::TwipsFromPixels(frame.right - frame.left), windows::TwipsFromPixels(frame.bottom - frame.top)};
}

void WindowOuterSize(Handle window, Size size) {
    ::SetWindowPos(WindowOf(window), nullptr, 0, 0, windows::PixelsFromTwips(size.width),
                   windows::PixelsFromTwips(size.height), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Windows only displays the reason; the window itself has to refuse WM_QUERYENDSESSION.
bool ShutdownBlockReasonCreate(Handle window, const std::u16string& reason) {
    if (const auto found = WindowObject(window)) {
        found->ShutdownBlocked(true);
    }
    return ::ShutdownBlockReasonCreate(WindowOf(window), windows::Wide(reason)) != FALSE;
}

void ShutdownBlockReasonDestroy(Handle window) noexcept {
    if (const auto found = WindowObject(window)) {
        found->ShutdownBlocked(false);
    }
    ::ShutdownBlockReasonDestroy(WindowOf(window));
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
    windows::RethrowEventFailure();
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
        DispatchToWindow(message);
    }
}

}  // namespace platform
