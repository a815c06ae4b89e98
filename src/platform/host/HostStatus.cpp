#include "platform/host/HostStatus.h"

#include <cerrno>

namespace platform::host {

namespace {

constexpr Status NotEnoughMemory = 8;  // ERROR_NOT_ENOUGH_MEMORY

}  // namespace

Status StatusFromErrno(int number) {
    switch (number) {
        case 0:
            return StatusSuccess;
        case ENOENT:
            return StatusFileNotFound;
        case ENOTDIR:
            return StatusPathNotFound;
        case EACCES:
        case EPERM:
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
        case EEXIST:
            return StatusFileExists;
        case ENOSPC:
        case EFBIG:
            return StatusDiskFull;
        case EDQUOT:
            return StatusDiskQuota;
        case ENAMETOOLONG:
            return StatusNameTooLong;
        case EAGAIN:
        case ENOMEM:
            return NotEnoughMemory;
        default:
            return StatusIoDevice;
    }
}

}  // namespace platform::host
