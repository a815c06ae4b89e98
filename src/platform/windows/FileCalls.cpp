#include "platform/FileCalls.h"

#include <filesystem>
#include <system_error>

#include "platform/Regional.h"
#include "platform/windows/DateValue.h"
#include "platform/windows/Win32.h"

namespace platform {

namespace {

constexpr DWORD NotNormal = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DIRECTORY;

class FileSearch {
public:
    explicit FileSearch(const std::string& path) : search_(::FindFirstFileA(path.c_str(), &found_)) {}
    ~FileSearch() {
        if (Found()) {
            ::FindClose(search_);
        }
    }
    FileSearch(const FileSearch&) = delete;
    FileSearch& operator=(const FileSearch&) = delete;

    [[nodiscard]] bool Found() const { return search_ != INVALID_HANDLE_VALUE; }
    [[nodiscard]] const WIN32_FIND_DATAA& File() const { return found_; }
    [[nodiscard]] bool Next() { return ::FindNextFileA(search_, &found_) != FALSE; }

private:
    WIN32_FIND_DATAA found_;
    HANDLE search_;
};

}  // namespace

Status CreateFileA(const std::string& path, std::uint32_t access, std::uint32_t disposition, Handle& file) {
    const DWORD sharing =
        access == GenericRead ? FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE : FILE_SHARE_READ;
    const HANDLE result =
        ::CreateFileA(path.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    file = result == INVALID_HANDLE_VALUE ? 0 : windows::HandleOf(result);
    return windows::StatusOf(file != 0);
}

Status ReadFile(Handle file, std::span<char> buffer, std::uint32_t& read) {
    DWORD count = 0;
    const Status status = windows::StatusOf(::ReadFile(windows::SystemHandleOf<HANDLE>(file), buffer.data(),
                                                       static_cast<DWORD>(buffer.size()), &count, nullptr));
    read = count;
    return status;
}

Status WriteFile(Handle file, std::string_view data) {
    while (!data.empty()) {
        DWORD written = 0;
        if (!::WriteFile(windows::SystemHandleOf<HANDLE>(file), data.data(), static_cast<DWORD>(data.size()), &written,
                         nullptr)) {
            return windows::LastStatus();
        }
        if (written == 0) {
            return StatusDiskFull;
        }
        data.remove_prefix(written);
    }
    return StatusSuccess;
}

Status FlushFileBuffers(Handle file) {
    return windows::StatusOf(::FlushFileBuffers(windows::SystemHandleOf<HANDLE>(file)));
}

Status MoveFileExA(const std::string& from, const std::string& to) {
    const DWORD attributes = ::GetFileAttributesA(to.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return StatusAccessDenied;
    }
    return windows::StatusOf(
        ::MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

Status ReplaceFileA(const std::string& replaced, const std::string& replacement) {
    return windows::StatusOf(::ReplaceFileA(replaced.c_str(), replacement.c_str(), nullptr, 0, nullptr, nullptr));
}

Status DeleteFileA(const std::string& path) noexcept {
    return windows::StatusOf(::DeleteFileA(path.c_str()));
}

std::string FindNormalFile(const std::string& path) {
    FileSearch search(path);
    for (bool found = search.Found(); found; found = search.Next()) {
        if ((search.File().dwFileAttributes & NotNormal) == 0) {
            return search.File().cFileName;
        }
    }
    return {};
}

bool IsFile(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool IsSameFile(const std::string& path, const std::string& other) {
    std::error_code error;
    return std::filesystem::equivalent(TextFromAnsi(path), TextFromAnsi(other), error);
}

Status DateLastModified(const std::string& path, double& date) {
    WIN32_FILE_ATTRIBUTE_DATA file;
    if (!::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &file)) {
        return windows::LastStatus();
    }
    if ((file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return StatusFileNotFound;
    }
    SYSTEMTIME worldTime;
    SYSTEMTIME localTime;
    if (!::FileTimeToSystemTime(&file.ftLastWriteTime, &worldTime) ||
        !::SystemTimeToTzSpecificLocalTime(nullptr, &worldTime, &localTime)) {
        return windows::LastStatus();
    }
    date = windows::DateValueOf(localTime);
    return StatusSuccess;
}

}  // namespace platform
