#include "platform/host/HostStatus.h"

#include <cerrno>

namespace platform::host {

namespace {

constexpr Status NotEnoughMemory = 8;        // ERROR_NOT_ENOUGH_MEMORY
constexpr Status BadExecutableFormat = 193;  // ERROR_BAD_EXE_FORMAT

}  // namespace

Status StatusFromErrno(int number) {
    switch (number) {
        case 0:
            return StatusSuccess;
        case ENOENT:
            return StatusFileNotFound;
        case ENOTDIR:
        case ELOOP:
            return StatusPathNotFound;
        case EACCES:
        case EPERM:
        case EISDIR:
        case EBADF:  // a file that was not opened for what is asked of it
            return StatusAccessDenied;
        case EXDEV:
            return StatusNotSameDevice;
        case EROFS:
            return StatusWriteProtect;
        case EHOSTDOWN:
        case EHOSTUNREACH:
        case ESTALE:
        case ENOTCONN:
            return StatusBadNetPath;
        case ETXTBSY:
            return StatusSharingViolation;
        case EEXIST:
            return StatusFileExists;
        case ENOSPC:
        case EFBIG:
            return StatusDiskFull;
        case EDQUOT:
            return StatusDiskQuota;
        case ENAMETOOLONG:
            return StatusNameTooLong;
        case EILSEQ:
            return StatusInvalidName;
        case EAGAIN:
        case ENOMEM:
        case E2BIG:
            return NotEnoughMemory;
        case ENOEXEC:
            return BadExecutableFormat;
        default:
            return StatusIoDevice;
    }
}

}  // namespace platform::host
