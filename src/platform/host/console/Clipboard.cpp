#include "platform/host/console/Clipboard.h"

#include <string>
#include <system_error>

#include "platform/Regional.h"
#include "platform/WindowSystem.h"
#include "platform/host/Machine.h"
#include "platform/host/Unicode.h"
#include "platform/host/WholeFile.h"

namespace platform {

namespace {

bool textIsOurs = false;

std::filesystem::path File() {
    return host::MachineFolder() / "clipboard.txt";
}

// The text takes the place of the earlier one whole or not at all.
bool ClipboardWrite(const std::string& bytes) {
    std::error_code failure;  // told by the write
    std::filesystem::create_directories(File().parent_path(), failure);
    return host::WriteWhole(File(), bytes) == StatusSuccess;
}

}  // namespace

namespace host {

std::optional<std::filesystem::path> ClipboardFile() {
    return textIsOurs ? std::optional(std::filesystem::absolute(File())) : std::nullopt;
}

}  // namespace host

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
