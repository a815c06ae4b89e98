#include "common/TextFile.h"

#include "common/Error.h"
#include "platform/FileCalls.h"
#include "platform/Process.h"
#include "platform/Regional.h"

namespace {

constexpr std::size_t BufferSize = 65536;

platform::Handle OpenedFile(const std::string& path, std::uint32_t access, std::uint32_t disposition) {
    platform::Handle file = 0;
    RaiseFileStatus(platform::CreateFileA(path, access, disposition, file));
    return file;
}

// To the disk itself, not only to the system's memory.
void WriteAll(const OwnedHandle& file, std::string_view bytes) {
    RaiseFileStatus(platform::WriteFile(file.Get(), bytes));
    RaiseFileStatus(platform::FlushFileBuffers(file.Get()));
}

// A file that is made to be written, at a path that outlives it. It is deleted with its owner, unless it is kept.
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

    // Writes it whole and closes it.
    void Write(std::string_view bytes) {
        WriteAll(file_, bytes);
        file_.Close();
    }
    void Keep() { kept_ = true; }

private:
    const std::string& path_;
    OwnedHandle file_;
    bool kept_ = false;
};

// Two processes that write one file at the same time must not write into one another's text.
std::string PathBeside(const std::string& path) {
    return path + "." + std::to_string(platform::GetCurrentProcessId()) + ".tmp";
}

bool IsDiskFull(platform::Status status) {
    return status == platform::StatusDiskFull || status == platform::StatusHandleDiskFull ||
           status == platform::StatusDiskQuota;
}

platform::Status PutInPlace(const std::string& newPath, const std::string& path) {
    const platform::Status status = platform::ReplaceFileA(path, newPath);
    return status == platform::StatusFileNotFound ? platform::MoveFileExA(newPath, path) : status;
}

// Writes a file beside `path` and puts it in its place. False when that cannot be done: no such file may be made in the
// folder, its longer name is too long, the earlier file may not be given up. Raises when the disk is full, with the
// earlier file as it was.
bool WrittenBeside(const std::string& path, std::string_view bytes) {
    const std::string pathBeside = PathBeside(path);
    platform::Handle handle = 0;
    const platform::Status status =
        platform::CreateFileA(pathBeside, platform::GenericWrite, platform::CreateAlways, handle);
    if (IsDiskFull(status)) {
        RaiseFileStatus(status);
    }
    if (status != platform::StatusSuccess) {
        return false;
    }
    NewFile file(pathBeside, handle);
    file.Write(bytes);
    if (PutInPlace(pathBeside, path) != platform::StatusSuccess) {
        return false;
    }
    file.Keep();
    return true;
}

}  // namespace

TextFileReader::TextFileReader(const Text& path)
    : file_(OpenedFile(platform::AnsiFromText(path), platform::GenericRead, platform::OpenExisting)) {
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
    const std::string place = platform::AnsiFromText(path);
    if (!overwrite) {
        NewFile file(place, OpenedFile(place, platform::GenericWrite, platform::CreateNew));
        file.Write(bytes);
        file.Keep();
    } else if (!WrittenBeside(place, bytes)) {
        const OwnedHandle file(OpenedFile(place, platform::GenericWrite, platform::CreateAlways));
        WriteAll(file, bytes);
    }
}
