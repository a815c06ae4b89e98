#include "platform/windows/Drawing.h"

namespace platform::windows {

namespace {

constexpr int TwipsPerInch = 1440;

// The program is aware of the system's resolution, which is the same for all screens and does not change while it runs.
int DotsPerInch() {
    const HDC screen = ::GetDC(nullptr);
    const int dots = ::GetDeviceCaps(screen, LOGPIXELSX);
    ::ReleaseDC(nullptr, screen);
    return dots;
}

}  // namespace

int DotsFromTwips(std::int32_t twips) {
    return ::MulDiv(twips, DotsPerInch(), TwipsPerInch);
}

std::int32_t TwipsFromDots(int dots) {
    return ::MulDiv(dots, TwipsPerInch, DotsPerInch());
}

OwnedIcon ProgramIcon(std::int32_t number) {
    return OwnedIcon(static_cast<HICON>(
        ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(number), IMAGE_ICON, 0, 0, LR_DEFAULTSIZE)));
}

OwnedFont DialogFont(bool bold) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    if (bold) {
        metrics.lfMessageFont.lfWeight = FW_BOLD;
    }
    return OwnedFont(::CreateFontIndirectW(&metrics.lfMessageFont));
}

}  // namespace platform::windows
