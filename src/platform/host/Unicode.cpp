#include "platform/host/Unicode.h"

#include <filesystem>
#include <system_error>

#include "platform/Regional.h"

namespace platform::host {

std::u16string FromUtf8(const std::string& bytes) {
    try {
        return std::filesystem::path(bytes).u16string();
    } catch (const std::system_error&) {
        return TextFromAnsi(bytes);
    }
}

std::string ToUtf8(const std::u16string& text) {
    return std::filesystem::path(text).native();
}

}  // namespace platform::host
