#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "platform/Regional.h"
#include "platform/WindowSystem.h"
#include "platform/host/Machine.h"
#include "platform/host/Unicode.h"

namespace platform {

namespace {

struct FileClose {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// True when all of it has reached the disk.
bool Written(const std::filesystem::path& path, const std::string& bytes) {
    const std::unique_ptr<std::FILE, FileClose> file(std::fopen(path.c_str(), "wb"));
    return file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
           std::fflush(file.get()) == 0 && fsync(fileno(file.get())) == 0;
}

// The text takes the place of the earlier one whole or not at all.
bool ClipboardWrite(const std::string& bytes) {
    const std::filesystem::path folder = host::MachineFolder();
    const std::filesystem::path beside = folder / ("clipboard." + std::to_string(getpid()) + ".tmp");
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (!Written(beside, bytes)) {
        std::filesystem::remove(beside, failure);
        return false;
    }
    std::filesystem::rename(beside, folder / "clipboard.txt", failure);
    if (failure) {
        std::error_code ignored;
        std::filesystem::remove(beside, ignored);
    }
    return !failure;
}

}  // namespace

bool ClipboardClear() {
    return ClipboardWrite("");
}

// A text on the clipboard ends at its first zero.
bool ClipboardSet(const std::string& text, std::uint32_t format) {
    return format == ClipboardText && ClipboardWrite(host::ToUtf8(TextFromAnsi(text.substr(0, text.find('\0')))));
}

}  // namespace platform
