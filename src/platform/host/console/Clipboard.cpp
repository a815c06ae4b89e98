#include "platform/host/console/Clipboard.h"

#include <fstream>
#include <string>
#include <system_error>

#include "platform/Regional.h"
#include "platform/WindowSystem.h"
#include "platform/host/Machine.h"
#include "platform/host/Unicode.h"

namespace platform {

namespace {

bool textIsOurs = false;

std::filesystem::path File() {
    return host::MachineFolder() / "clipboard.txt";
}

bool ClipboardWrite(const std::string& bytes) {
    std::error_code failure;  // told by the write
    std::filesystem::create_directories(File().parent_path(), failure);
    return (std::ofstream(File(), std::ios::binary) << bytes << std::flush).good();
}

}  // namespace

std::optional<std::filesystem::path> host::ClipboardFile() {
    return textIsOurs ? std::optional(File()) : std::nullopt;
}

bool ClipboardClear() {
    textIsOurs = false;
    return ClipboardWrite("");
}

// A text on the clipboard ends at its first zero.
bool ClipboardSet(const std::string& text, std::uint32_t format) {
    textIsOurs = format == ClipboardText && ClipboardWrite(host::ToUtf8(TextFromAnsi(text.substr(0, text.find('\0')))));
    return textIsOurs;
}

}  // namespace platform
