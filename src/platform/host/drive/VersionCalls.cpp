#include "platform/VersionCalls.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <algorithm>

#include "platform/host/FileDescriptor.h"
#include "platform/host/drive/Drive.h"
#include "platform/host/drive/PortableExecutable.h"

namespace platform {

namespace {

// A file of the machine's drive, mapped as long as it lives: libraries are large, and little of them is looked at.
class MappedFile {
public:
    explicit MappedFile(const std::string& path) {
        const host::DrivePlace place = host::FindPlace(path);
        if (!place.IsFile() || !place.IsReadable()) {
            return;
        }
        const host::FileDescriptor file(open(place.path.c_str(), O_RDONLY | O_CLOEXEC));
        struct stat found {};
        if (!file || fstat(file.Get(), &found) != 0 || found.st_size <= 0) {
            return;
        }
        const auto size = static_cast<std::size_t>(found.st_size);
        void* const start = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.Get(), 0);
        if (start != MAP_FAILED) {
            bytes_ = {static_cast<const char*>(start), size};
        }
    }
    ~MappedFile() {
        if (!bytes_.empty()) {
            munmap(const_cast<char*>(bytes_.data()), bytes_.size());
        }
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    [[nodiscard]] std::string_view Bytes() const { return bytes_; }

private:
    std::string_view bytes_;
};

}  // namespace

std::int32_t GetFileVersionInfoSizeA(const std::string& path) {
    return static_cast<std::int32_t>(host::VersionBlock(MappedFile(path).Bytes()).size());
}

bool GetFileVersionInfoA(const std::string& path, std::uint32_t /*handle*/, std::span<char> block) {
    const MappedFile file(path);
    const std::string_view content = host::VersionBlock(file.Bytes());
    std::ranges::copy(content.substr(0, block.size()), block.begin());
    return !content.empty();
}

std::span<const char> VerQueryValueA(std::span<const char> block, const std::string& subBlock) {
    return subBlock == "\\" ? host::FixedVersion({block.data(), block.size()}) : std::span<const char>();
}

}  // namespace platform
