#include "platform/windows/Drawing.h"

#include <algorithm>

namespace platform::windows {

namespace {

constexpr int TwipsPerInch = 1440;

// The program is aware of the system's resolution, which is the same for all screens and does not change while it runs.
int DotsPerInch() {
    const Owned<HDC, ::DeleteDC> screen(::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr));
    return ::GetDeviceCaps(screen.get(), LOGPIXELSX);
}

LOGFONTW DialogFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return metrics.lfMessageFont;
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

OwnedFont ControlFont(const Font& font, bool bold) {
    LOGFONTW described = DialogFont();
    if (!font.face.empty()) {
        described = {};
        described.lfHeight = -DotsFromTwips(font.height);  // negative: of the character without its leading
        described.lfCharSet = DEFAULT_CHARSET;
        std::copy_n(Wide(font.face), std::min<std::size_t>(font.face.size(), LF_FACESIZE - 1), described.lfFaceName);
    }
    described.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    return OwnedFont(::CreateFontIndirectW(&described));
}

}  // namespace platform::windows
