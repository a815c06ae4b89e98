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

std::filesystem::path copiedTo;  // the clipboard file, if it contains our text

// Returns the clipboard file, or an empty path if writing failed.
std::filesystem::path WriteClipboard(const std::string& bytes) {
    const std::filesystem::path file = host::MachineFolder() / "clipboard.txt";
    std::error_code failure;  // ignored; the write below reports any failure
    std::filesystem::create_directories(file.parent_path(), failure);
    const bool isWritten = (std::ofstream(file, std::ios::binary) << bytes << std::flush).good();
    return isWritten ? file : std::filesystem::path();
}

}  // namespace

std::filesystem::path host::ClipboardFile() {
    return copiedTo;
}

bool ClipboardClear() {
    copiedTo.clear();
    return !WriteClipboard("").empty();
}

// Supports only the format CF_TEXT, in which a string ends at the first NUL.
bool ClipboardSet(const std::string& text, std::uint32_t /*format*/) {
    copiedTo = WriteClipboard(host::ToUtf8(TextFromAnsi(text.substr(0, text.find('\0')))));
    return !copiedTo.empty();
}

}  // namespace platform
