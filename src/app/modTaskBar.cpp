#include "app/modTaskBar.h"

#include <cstdint>

#include "platform/WindowSystem.h"

void ShowInTaskBar(platform::Handle window, bool show) {
    platform::LockWindowUpdate(platform::GetDesktopWindow());
    platform::ShowWindow(window, platform::ShowHide);
    std::int32_t style = platform::GetWindowLongA(window, platform::LongExtendedStyle);
    if (show) {
        style |= platform::ExtendedStyleAppWindow;
    } else {
        style &= ~platform::ExtendedStyleAppWindow;
    }
    platform::SetWindowLongA(window, platform::LongExtendedStyle, style);
    platform::ShowWindow(window, platform::ShowShow);
    platform::LockWindowUpdate(0);
}
