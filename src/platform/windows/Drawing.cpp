#include "platform/windows/Drawing.h"

#include <algorithm>

namespace platform::windows {

namespace {

constexpr int TwipsPerInch = 1440;

// Returns the system DPI, which applies to all screens and never changes while the program runs, because the manifest
// declares only system DPI awareness.
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

int PixelsFromTwips(std::int32_t twips) {
    return ::MulDiv(twips, DotsPerInch(), TwipsPerInch);
}

std::int32_t TwipsFromPixels(int pixels) {
    return ::MulDiv(pixels, TwipsPerInch, DotsPerInch());
}

OwnedIcon ProgramIcon(std::int32_t number) {
    return OwnedIcon(static_cast<HICON>(
        ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(number), IMAGE_ICON, 0, 0, LR_DEFAULTSIZE)));
}

OwnedFont ControlFont(const Font& font, bool bold) {
    LOGFONTW logical = DialogFont();
    if (!font.face.empty()) {
        logical = {};
        logical.lfHeight = -PixelsFromTwips(font.height);  // negative: the character height, without internal leading
        logical.lfCharSet = DEFAULT_CHARSET;
        std::copy_n(Wide(font.face), std::min<std::size_t>(font.face.size(), LF_FACESIZE - 1), logical.lfFaceName);
    }
    logical.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    return OwnedFont(::CreateFontIndirectW(&logical));
}

}  // namespace platform::windows
