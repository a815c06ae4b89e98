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

bool containsOurText = false;

std::filesystem::path MachineClipboard() {
    return host::MachineFolder() / "clipboard.txt";
}

bool WriteClipboard(const std::string& bytes) {
    std::error_code failure;  // ignored; the write below reports any failure
    std::filesystem::create_directories(MachineClipboard().parent_path(), failure);
    return (std::ofstream(MachineClipboard(), std::ios::binary) << bytes << std::flush).good();
}

}  // namespace

std::optional<std::filesystem::path> host::ClipboardFile() {
    return containsOurText ? std::optional(MachineClipboard()) : std::nullopt;
}

bool ClipboardClear() {
    containsOurText = false;
    return WriteClipboard("");
}

// In the format CF_TEXT, a string ends at the first NUL.
bool ClipboardSet(const std::string& text, std::uint32_t format) {
    containsOurText =
        format == ClipboardText && WriteClipboard(host::ToUtf8(TextFromAnsi(text.substr(0, text.find('\0')))));
    return containsOurText;
}

}  // namespace platform
