#include "platform/VersionCalls.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "platform/host/FileDescriptor.h"
#include "platform/host/drive/Drive.h"
#include "platform/host/drive/PortableExecutable.h"

namespace platform {

namespace {

// A file's bytes through a window of one page: headers, resource tree and block are many small pieces in two or three
// places. Not mapped into memory, where another process that cuts the file would end this one.
class ImageFile {
public:
    explicit ImageFile(const char* path) : file_(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}

    bool Read(std::uint64_t offset, std::span<char> bytes) {
        if (bytes.size() > window_.size()) {
            return ReadAt(offset, bytes, bytes.size()) == bytes.size();
        }
        if (offset < start_ || offset + bytes.size() > start_ + filled_) {
            start_ = offset;
            filled_ = ReadAt(offset, window_, bytes.size());
        }
        if (bytes.size() > filled_ - (offset - start_)) {
            return false;
        }
        std::copy_n(window_.begin() + static_cast<std::ptrdiff_t>(offset - start_), bytes.size(), bytes.begin());
        return true;
    }

private:
    // Reads as much of `bytes` as the file holds, or gives at once; fewer than `atLeast` only at the file's end.
    std::size_t ReadAt(std::uint64_t offset, std::span<char> bytes, std::size_t atLeast) {
        std::size_t done = 0;
        while (done < atLeast) {
            const ssize_t read = host::Uninterrupted([&] {
                return pread(file_.Get(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
            });
            if (read <= 0) {
                break;
            }
            done += static_cast<std::size_t>(read);
        }
        return done;
    }

    host::FileDescriptor file_;
    std::array<char, 4096> window_;
    std::uint64_t start_ = 0;
    std::size_t filled_ = 0;
};

// The version block of the file at `path` on the machine's drive; empty when it has none or cannot be read.
std::vector<char> ReadVersionBlock(const std::string& path) {
    const host::DrivePlace place = host::FindPlace(path);
    if (place.status != StatusSuccess || !place.IsFile() || !place.IsReadable()) {
        return {};
    }
    ImageFile file(place.path.c_str());
    return host::VersionBlock([&](std::uint64_t offset, std::span<char> bytes) { return file.Read(offset, bytes); });
}

// The calls for the size and for the block come in pairs: the block that the first one read is kept for the second. So
// a file is read once, and the block has the size that was told whatever happens to the file in between.
struct KeptBlock {
    std::string path;
    std::vector<char> block;
};

KeptBlock& Kept() {
    static KeptBlock kept;
    return kept;
}

}  // namespace

std::int32_t GetFileVersionInfoSizeA(const std::string& path) {
    Kept() = {path, ReadVersionBlock(path)};
    return static_cast<std::int32_t>(Kept().block.size());
}

bool GetFileVersionInfoA(const std::string& path, std::uint32_t, std::span<char> block) {
    KeptBlock kept = std::exchange(Kept(), {});
    const std::vector<char> content = kept.path == path ? std::move(kept.block) : ReadVersionBlock(path);
    std::copy_n(content.begin(), std::min(content.size(), block.size()), block.begin());
    return !content.empty();
}

std::span<const char> VerQueryValueA(std::span<const char> block, const std::string& subBlock) {
    return subBlock == "\\" ? host::FixedVersion(block) : std::span<const char>();
}

}  // namespace platform
