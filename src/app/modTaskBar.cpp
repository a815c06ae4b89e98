#include "app/modTaskBar.h"

#include <cstdint>

#include "platform/WindowSystem.h"

void ShowInTaskBar(platform::Handle hWnd, bool show) {
    platform::LockWindowUpdate(platform::GetDesktopWindow());
    platform::ShowWindow(hWnd, platform::ShowHide);
    std::int32_t style = platform::GetWindowLongA(hWnd, platform::LongExtendedStyle);
    if (show) {
        style |= platform::ExtendedStyleAppWindow;
    } else {
        style &= ~platform::ExtendedStyleAppWindow;
    }
    platform::SetWindowLongA(hWnd, platform::LongExtendedStyle, style);
    platform::ShowWindow(hWnd, platform::ShowShow);
    platform::LockWindowUpdate(0);
}
