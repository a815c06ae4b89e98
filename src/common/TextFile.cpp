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

// Two processes that write one file at the same time must not write into one another's text.
std::string PathBeside(const std::string& path) {
    return path + "." + std::to_string(platform::GetCurrentProcessId()) + ".tmp";
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

TextFileWriter::TextFileWriter(const Text& path)
    : path_(platform::AnsiFromText(path)),
      pathBeside_(PathBeside(path_)),
      file_(OpenedFile(pathBeside_, platform::GenericWrite, platform::CreateAlways)) {
}

TextFileWriter::~TextFileWriter() {
    if (!committed_) {
        file_.Close();
        platform::DeleteFileA(pathBeside_);
    }
}

void TextFileWriter::Write(const Text& text) {
    buffer_ += platform::AnsiFromText(text);
    if (buffer_.size() >= BufferSize) {
        Flush();
    }
}

void TextFileWriter::WriteLine(const Text& line) {
    Write(line);
    Write(u"\r\n");
}

void TextFileWriter::Flush() {
    RaiseFileStatus(platform::WriteFile(file_.Get(), buffer_));
    buffer_.clear();
}

void TextFileWriter::Commit() {
    Flush();
    RaiseFileStatus(platform::FlushFileBuffers(file_.Get()));
    file_.Close();
    RaiseFileStatus(platform::MoveFileExA(pathBeside_, path_));
    committed_ = true;
}
