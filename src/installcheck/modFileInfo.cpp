#include "installcheck/modFileInfo.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "common/modStringLibrary.h"
#include "platform/Bytes.h"
#include "platform/Regional.h"
#include "platform/VersionCalls.h"

namespace {

// Size and field offsets of VS_FIXEDFILEINFO, which consists of 13 little-endian 32-bit numbers.
constexpr std::size_t FixedInfoSize = 52;
constexpr std::size_t FileVersionMS = 8;
constexpr std::size_t FileVersionLS = 12;
constexpr std::size_t FileType = 36;

// Returns zeros if there is no version information.
std::string FixedInfoGet(const std::string& path) {
    std::string info;
    std::string block(static_cast<std::size_t>(std::max(platform::GetFileVersionInfoSizeA(path), 0)), '\0');
    if (!block.empty() && platform::GetFileVersionInfoA(path, 0, block)) {
        const auto found = platform::VerQueryValueA(block, "\\");
        info.assign(found.begin(), found.end());
    }
    info.resize(FixedInfoSize);
    return info;
}

std::uint32_t NumberAt(const std::string& info, std::size_t offset) {
    return platform::NumberFromBytes(info.substr(offset, sizeof(std::uint32_t)));
}

Text TypeText(std::uint32_t type) {
    switch (type) {
        case 0: return u"Unbekannt";
        case 1: return u"Anwendung";
        case 2: return u"Dynamic Link Library (DLL)";
        case 3: return u"Geräte Trieber";
        case 4: return u"Schriftart";
        case 5: return u"Virtueller Geräte Treiber";
        case 7: return u"Static Library";
        default: return {};
    }
}

// Returns the high and low words as signed numbers, separated by a dot.
Text SignedWords(std::uint32_t words) {
    return DecimalText(static_cast<std::int16_t>(words >> 16)) + u"." + DecimalText(static_cast<std::int16_t>(words));
}

}  // namespace

FileInfo FileInfoGet(const Text& path) {
    const std::string info = FixedInfoGet(platform::AnsiFromText(path));
    return {PathFileName(path), TypeText(NumberAt(info, FileType)),
            SignedWords(NumberAt(info, FileVersionMS)) + u"." + SignedWords(NumberAt(info, FileVersionLS)), path};
}
