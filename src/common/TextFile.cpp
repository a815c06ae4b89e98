#include "common/TextFile.h"

#include <random>

#include "common/Error.h"
#include "platform/FileCalls.h"
#include "platform/Regional.h"

namespace {

constexpr std::size_t BufferSize = 65536;

platform::Handle OpenFile(const std::string& path, std::uint32_t access, std::uint32_t disposition) {
    platform::Handle file = 0;
    RaiseFileStatus(platform::CreateFileA(path, access, disposition, file));
    return file;
}

void WriteAndFlush(const OwnedHandle& file, std::string_view bytes) {
    RaiseFileStatus(platform::WriteFile(file.Get(), bytes));
    RaiseFileStatus(platform::FlushFileBuffers(file.Get()));
}

// Owns a newly created file and deletes it on destruction, unless Keep was called. `path` must outlive the object.
class NewFile {
public:
    NewFile(const std::string& path, platform::Handle file) noexcept : path_(path), file_(file) {}
    ~NewFile() {
        file_.Close();
        if (!kept_) {
            platform::DeleteFileA(path_);
        }
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void WriteAndClose(std::string_view bytes) {
        WriteAndFlush(file_, bytes);
        file_.Close();
    }
    void Keep() { kept_ = true; }

private:
    const std::string& path_;
    OwnedHandle file_;
    bool kept_ = false;
};

// Creates a temporary file next to `path` and sets `tempPath` to its path. The name is random, so that nobody can plant
// a file or link there.
platform::Status CreateTempFile(const std::string& path, std::string& tempPath, platform::Handle& file) {
    platform::Status status = platform::StatusFileExists;
    for (std::random_device random; status == platform::StatusFileExists;) {
        tempPath = path + "." + std::to_string(random()) + std::to_string(random()) + ".tmp";
        status = platform::CreateFileA(tempPath, platform::GenericWrite, platform::CreateNew, file);
    }
    return status;
}

bool IsDiskFull(platform::Status status) {
    return status == platform::StatusDiskFull || status == platform::StatusHandleDiskFull ||
           status == platform::StatusDiskQuota;
}

// Returns false if the temporary file can't be created, the existing file's permissions can't be copied, or the
// existing file can't be replaced. Raises a file error if the disk is full or a write fails. Any failure leaves the
// existing file unchanged.
bool TryReplaceViaTempFile(const std::string& path, std::string_view bytes) {
    std::string tempPath;
    platform::Handle handle = 0;
    if (const platform::Status created = CreateTempFile(path, tempPath, handle); created != platform::StatusSuccess) {
        if (IsDiskFull(created)) {
            RaiseFileStatus(created);
        }
        return false;
    }
    NewFile file(tempPath, handle);
    const platform::Status copied = platform::CopyPermissions(path, handle);
    if (copied != platform::StatusSuccess && copied != platform::StatusFileNotFound) {
        return false;
    }
    file.WriteAndClose(bytes);
    if (platform::MoveFileExA(tempPath, path) != platform::StatusSuccess) {
        return false;
    }
    file.Keep();
    return true;
}

}  // namespace

TextFileReader::TextFileReader(const Text& path)
    : file_(OpenFile(platform::AnsiFromText(path), platform::GenericRead, platform::OpenExisting)) {
}

bool TextFileReader::Fill() {
    buffer_.resize(BufferSize);
    next_ = 0;
    std::uint32_t read = 0;
    const platform::Status status = platform::ReadFile(file_.Get(), buffer_, read);
    buffer_.resize(read);
    RaiseFileStatus(status);
    return read != 0;
}

bool TextFileReader::AtEnd() {
    return next_ == buffer_.size() && !Fill();
}

Text TextFileReader::ReadLine() {
    std::string line;
    while (!AtEnd()) {
        const std::size_t end = buffer_.find_first_of("\r\n", next_);
        if (end == std::string::npos) {
            line.append(buffer_, next_);
            next_ = buffer_.size();
            continue;
        }
        line.append(buffer_, next_, end - next_);
        next_ = end + 1;
        if (buffer_[end] == '\r' && !AtEnd() && buffer_[next_] == '\n') {
            ++next_;
        }
        break;
    }
    return platform::TextFromAnsi(line);
}

void WriteTextFile(const Text& path, const Text& text, bool overwrite) {
    WriteBytes(path, platform::AnsiFromText(text), overwrite);
}

void WriteBytes(const Text& path, std::string_view bytes, bool overwrite) {
    const std::string filePath = platform::AnsiFromText(path);
    if (!overwrite) {
        NewFile file(filePath, OpenFile(filePath, platform::GenericWrite, platform::CreateNew));
        file.WriteAndClose(bytes);
        file.Keep();
    } else if (!TryReplaceViaTempFile(filePath, bytes)) {
        WriteAndFlush(OwnedHandle(OpenFile(filePath, platform::GenericWrite, platform::CreateAlways)), bytes);
    }
}
