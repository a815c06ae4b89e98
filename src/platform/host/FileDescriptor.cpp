#include "platform/host/FileDescriptor.h"

#include <cerrno>

namespace platform::host {

Status StatusFromErrno(int number) {
    constexpr Status notEnoughMemory = 8;  // ERROR_NOT_ENOUGH_MEMORY
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
            return notEnoughMemory;
        default:
            return StatusIoDevice;
    }
}

}  // namespace platform::host
