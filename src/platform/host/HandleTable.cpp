#include "platform/host/HandleTable.h"

#include <map>
#include <utility>

namespace platform::host {

namespace {

constexpr Handle HandleStep = 4;  // as the numbers of Windows' own handles

struct HandleTable {
    std::map<Handle, HandleObject> objects;
    Handle last = 0;
};

HandleTable& Table() {
    static HandleTable table;
    return table;
}

}  // namespace

Handle HandleAdd(HandleObject object) {
    HandleTable& table = Table();
    table.last += HandleStep;
    table.objects.emplace(table.last, std::move(object));
    return table.last;
}

bool HandleRemove(Handle handle) noexcept {
    return Table().objects.erase(handle) == 1;
}

HandleObject* HandleFind(Handle handle) {
    const auto place = Table().objects.find(handle);
    return place == Table().objects.end() ? nullptr : &place->second;
}

}  // namespace platform::host

namespace platform {

Status CloseHandle(Handle handle) noexcept {
    const bool isKey = host::HandleFindAs<host::OpenKey>(handle) != nullptr;  // RegCloseKey closes those
    return !isKey && host::HandleRemove(handle) ? StatusSuccess : StatusInvalidHandle;
}

}  // namespace platform
