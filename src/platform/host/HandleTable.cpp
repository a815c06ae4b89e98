#include "platform/host/HandleTable.h"

#include <map>
#include <utility>

namespace platform::host {

namespace {

std::map<Handle, HandleObject> objects;
Handle lastHandle = 0;

}  // namespace

Handle HandleAdd(HandleObject object) {
    objects.emplace(++lastHandle, std::move(object));
    return lastHandle;
}

bool HandleRemove(Handle handle) noexcept {
    return objects.erase(handle) == 1;
}

HandleObject* HandleFind(Handle handle) {
    const auto place = objects.find(handle);
    return place == objects.end() ? nullptr : &place->second;
}

}  // namespace platform::host

namespace platform {

Status CloseHandle(Handle handle) noexcept {
    const bool isKey = host::HandleFindAs<host::OpenKey>(handle) != nullptr;  // RegCloseKey closes those
    return !isKey && host::HandleRemove(handle) ? StatusSuccess : StatusInvalidHandle;
}

}  // namespace platform
