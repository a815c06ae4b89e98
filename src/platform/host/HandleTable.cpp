#include "platform/host/HandleTable.h"

#include <map>
#include <utility>

namespace platform {

namespace {

std::map<Handle, host::HandleObject> objects;
Handle lastHandle = 0;

}  // namespace

Handle host::HandleAdd(HandleObject object) {
    objects.emplace(++lastHandle, std::move(object));
    return lastHandle;
}

bool host::HandleRemove(Handle handle) noexcept {
    return objects.erase(handle) == 1;
}

host::HandleObject* host::HandleFind(Handle handle) {
    const auto found = objects.find(handle);
    return found == objects.end() ? nullptr : &found->second;
}

Status CloseHandle(Handle handle) noexcept {
    const bool isKey = std::get_if<host::OpenKey>(host::HandleFind(handle)) != nullptr;  // only RegCloseKey closes keys
    return !isKey && host::HandleRemove(handle) ? StatusSuccess : StatusInvalidHandle;
}

}  // namespace platform
