#include "platform/host/console/Clipboard.h"

#include <cstdio>
#include <fstream>
#include <string>
#include <system_error>

#include "platform/Process.h"
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

// The text takes the place of the earlier one whole or not at all.
bool ClipboardWrite(const std::string& bytes) {
    const std::filesystem::path beside = File().native() + '.' + std::to_string(GetCurrentProcessId()) + ".tmp";
    std::error_code failure;  // told by the write
    std::filesystem::create_directories(beside.parent_path(), failure);
    const bool isWritten = (std::ofstream(beside, std::ios::binary) << bytes << std::flush).good();
    if (isWritten && std::rename(beside.c_str(), File().c_str()) == 0) {
        return true;
    }
    std::filesystem::remove(beside, failure);
    return false;
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
