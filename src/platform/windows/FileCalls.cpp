#include "platform/FileCalls.h"

#include <filesystem>
#include <system_error>

#include "platform/Regional.h"
#include "platform/windows/Win32.h"

namespace platform {

namespace {

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD NotNormal = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DIRECTORY;

// Replacing a file would lose these attributes. Symbolic links are reparse points.
constexpr DWORD NotReplaceable =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_ENCRYPTED;
constexpr DWORD CopiedAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

using OwnedFile = windows::Owned<HANDLE, ::CloseHandle>;

// Returns the file's access control list as a security descriptor, or an empty string if the file system doesn't have
// access control lists or access is denied.
std::string AccessControlList(HANDLE file) {
    DWORD size = 0;
    ::GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::string descriptor(size, '\0');
    return ::GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, descriptor.data(), size, &size) ? descriptor
                                                                                                      : std::string();
}

// Sets the list unchanged, regardless of what the file would inherit from its folder.
bool SetAccessControlList(HANDLE file, std::string& descriptor) {
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    ::GetSecurityDescriptorControl(descriptor.data(), &control, &revision);
    if ((control & SE_DACL_AUTO_INHERITED) != 0) {
        // If this flag weren't set, the system would clear SE_DACL_AUTO_INHERITED.
        ::SetSecurityDescriptorControl(descriptor.data(), SE_DACL_AUTO_INHERIT_REQ, SE_DACL_AUTO_INHERIT_REQ);
    }
    const HANDLE writable = ::ReOpenFile(file, WRITE_DAC, ShareAll, 0);
    return writable != INVALID_HANDLE_VALUE &&
           ::SetKernelObjectSecurity(OwnedFile(writable).get(), DACL_SECURITY_INFORMATION, descriptor.data());
}

bool CopyAccessControlList(HANDLE from, HANDLE to) {
    std::string wanted = AccessControlList(from);
    return AccessControlList(to) == wanted || (!wanted.empty() && SetAccessControlList(to, wanted));
}

bool CopyAttributes(DWORD attributes, HANDLE to) {
    FILE_BASIC_INFO info{};  // file times of 0 mean "unchanged"
    info.FileAttributes = FILE_ATTRIBUTE_ARCHIVE | (attributes & CopiedAttributes);
    return ::SetFileInformationByHandle(to, FileBasicInfo, &info, sizeof info) != FALSE;
}

}  // namespace

Status CloseHandle(Handle handle) noexcept {
    return windows::StatusOf(::CloseHandle(windows::SystemHandleOf<HANDLE>(handle)));
}

Status CreateFileA(const std::string& path, std::uint32_t access, std::uint32_t disposition, Handle& file) {
    const DWORD sharing = access == GenericRead ? ShareAll : FILE_SHARE_READ;
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
    DWORD written = 0;
    if (!::WriteFile(windows::SystemHandleOf<HANDLE>(file), data.data(), static_cast<DWORD>(data.size()), &written,
                     nullptr)) {
        return windows::LastStatus();
    }
    return written == data.size() ? StatusSuccess : StatusDiskFull;
}

Status FlushFileBuffers(Handle file) {
    return windows::StatusOf(::FlushFileBuffers(windows::SystemHandleOf<HANDLE>(file)));
}

Status CopyPermissions(const std::string& path, Handle file) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return windows::LastStatus();
    }
    if ((attributes & NotReplaceable) != 0) {
        return StatusAccessDenied;
    }
    // Requires DELETE access, because a file with the same access control list must be renamed or deleted later.
    const HANDLE source =
        ::CreateFileA(path.c_str(), READ_CONTROL | DELETE, ShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
    if (source == INVALID_HANDLE_VALUE) {
        return windows::LastStatus();
    }
    const OwnedFile owner(source);
    auto* const target = windows::SystemHandleOf<HANDLE>(file);
    return CopyAccessControlList(source, target) && CopyAttributes(attributes, target) ? StatusSuccess
                                                                                       : StatusAccessDenied;
}

// Checks the read-only attribute itself, because Wine doesn't.
Status MoveFileExA(const std::string& from, const std::string& to) {
    const DWORD attributes = ::GetFileAttributesA(to.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return StatusAccessDenied;
    }
    return windows::StatusOf(
        ::MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

Status DeleteFileA(const std::string& path) noexcept {
    return windows::StatusOf(::DeleteFileA(path.c_str()));
}

std::string FindNormalFile(const std::string& path) {
    WIN32_FIND_DATAA file;
    const HANDLE search = ::FindFirstFileA(path.c_str(), &file);
    if (search == INVALID_HANDLE_VALUE) {
        return {};
    }
    const windows::Owned<HANDLE, ::FindClose> owner(search);
    do {
        if ((file.dwFileAttributes & NotNormal) == 0) {
            return file.cFileName;
        }
    } while (::FindNextFileA(search, &file));
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
