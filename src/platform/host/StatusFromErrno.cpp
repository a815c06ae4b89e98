#include "platform/host/StatusFromErrno.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace platform::host {

Status StatusFromErrno(int number) {
    static constexpr std::array<std::pair<int, Status>, 12> statuses = {{{0, StatusSuccess},
                                                                         {ENOENT, StatusFileNotFound},
                                                                         {ENOTDIR, StatusPathNotFound},
                                                                         {EACCES, StatusAccessDenied},
                                                                         {EPERM, StatusAccessDenied},
                                                                         {EROFS, StatusWriteProtect},
                                                                         {EEXIST, StatusFileExists},
                                                                         {ENOSPC, StatusDiskFull},
                                                                         {EFBIG, StatusDiskFull},
                                                                         {EDQUOT, StatusDiskQuota},
                                                                         {ENAMETOOLONG, StatusNameTooLong},
                                                                         {ENOMEM, 8}}};  // ERROR_NOT_ENOUGH_MEMORY
    const auto* const found = std::ranges::find(statuses, number, &std::pair<int, Status>::first);
    return found == statuses.end() ? StatusIoDevice : found->second;
}

}  // namespace platform::host
