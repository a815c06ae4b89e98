#pragma once

#include <cerrno>
#include <map>

#include "platform/Handle.h"

namespace platform::host {

// Returns the Windows status for an errno, or StatusIoDevice if there is no equivalent.
inline Status StatusFromErrno(int number) {
    static const std::map<int, Status> statuses = {
        {0, StatusSuccess},           {ENOENT, StatusFileNotFound},      {ENOTDIR, StatusPathNotFound},
        {EACCES, StatusAccessDenied}, {EPERM, StatusAccessDenied},       {EROFS, StatusWriteProtect},
        {EEXIST, StatusFileExists},   {ENOSPC, StatusDiskFull},          {EFBIG, StatusDiskFull},
        {EDQUOT, StatusDiskQuota},    {ENAMETOOLONG, StatusNameTooLong}, {ENOMEM, 8}};  // ERROR_NOT_ENOUGH_MEMORY
    const auto found = statuses.find(number);
    return found == statuses.end() ? StatusIoDevice : found->second;
}

}  // namespace platform::host
