#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "platform/host/registry/RegFile.h"

// Any bytes as a .reg file: what was read of them is the same when it is written and read again, in whatever pieces, as
// a journal is read while others append to it. The first byte chooses the size of the pieces.

namespace {

using platform::host::RegFileReader;
using platform::host::RegistryKey;

// The whole text of what is read of `text` in pieces of so many bytes.
std::string ReadAndWritten(std::string_view text, std::size_t pieceSize) {
    const auto root = std::make_shared<RegistryKey>();
    RegFileReader reader(root, {{u"HKEY_LOCAL_MACHINE", {}}, {u"HKEY_CLASSES_ROOT", u"Software\\Classes"}});
    std::string unfinished;
    for (std::size_t position = 0; position < text.size(); position += pieceSize) {
        unfinished += text.substr(position, pieceSize);
        unfinished.erase(0, reader.Read(unfinished, true));
    }
    std::string written;
    platform::host::WriteRegFile(*root, u"HKEY_LOCAL_MACHINE", [&](std::string_view piece) { written += piece; });
    return written;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::optional<std::string> decoded = platform::host::TextOfUtf16File(bytes);
    const std::string_view text = decoded ? std::string_view(*decoded) : bytes;
    const std::string written = ReadAndWritten(text, text.size() + 1);
    if (ReadAndWritten(written, written.size() + 1) != written ||
        ReadAndWritten(written, std::size_t{data[0]} + 1) != written) {
        std::abort();
    }
    return 0;
}
