#include "platform/host/registry/OpenKeys.h"

#include <limits>
#include <vector>

#include "platform/RegistryCalls.h"
#include "platform/host/Machine.h"
#include "platform/host/NameOrder.h"

namespace platform::host {

namespace {

// The current user's key below HKEY_USERS, named in the form of a user's security identifier.
constexpr std::u16string_view CurrentUserName = u"S-1-5-21-0-0-0-1000";
constexpr std::u16string_view ClassesPath = u"Software\\Classes";

constexpr Status StatusBadPathName = 161;  // ERROR_BAD_PATHNAME

bool IsRoot(Handle handle) {
    return handle == KeyClassesRoot || handle == KeyCurrentUser || handle == KeyLocalMachine || handle == KeyUsers;
}

}  // namespace

OpenKeys& OpenKeys::OfMachine() {
    static OpenKeys keys;
    if (std::filesystem::path folder = MachineFolder();
        keys.machine_ == nullptr || folder.native() != keys.folder_.native()) {
        keys.MoveTo(folder);
    }
    return keys;
}

OpenKeys::OpenKeys() {
    users_->SubKeyMade(CurrentUserName);
}

void OpenKeys::MoveTo(const std::filesystem::path& folder) {
    open_.clear();
    folder_ = folder;
    const std::u16string classes(ClassesPath);
    machine_ = std::make_unique<RegistryJournal>(
        folder / "machine.reg", std::vector<RegFileRoot>{{u"HKEY_LOCAL_MACHINE", {}}, {u"HKEY_CLASSES_ROOT", classes}},
        classes);
    user_ = std::make_unique<RegistryJournal>(folder / "user.reg", std::vector<RegFileRoot>{{u"HKEY_CURRENT_USER", {}}},
                                              std::u16string());
}

Status OpenKeys::Find(Handle handle, std::int32_t rights, PlacedKey& found) {
    if (IsRoot(handle)) {
        const Status status = FindRoot(handle, found);
        const bool changes = (rights & (KeySetValue | KeyCreateSubKey)) != 0;
        return status == StatusSuccess && changes && !found.IsWritable() ? StatusAccessDenied : status;
    }
    const auto open = open_.find(handle);
    if (open == open_.end()) {
        return StatusInvalidHandle;
    }
    found.journal = open->second.journal;
    if (const Status status = found.journal == nullptr ? StatusSuccess : found.journal->CatchUp();
        status != StatusSuccess) {
        return status;
    }
    found.key = open->second.key.lock();
    if (found.key == nullptr) {
        return StatusKeyDeleted;
    }
    return (rights & ~open->second.rights) == 0 ? StatusSuccess : StatusAccessDenied;
}

Status OpenKeys::FindRoot(Handle handle, PlacedKey& found) {
    if (handle == KeyUsers) {
        found = {nullptr, users_};
        return StatusSuccess;
    }
    found.journal = handle == KeyCurrentUser ? user_.get() : machine_.get();
    const Status status = found.journal->CatchUp();
    found.key = KeyAt(found.journal->Root(), handle == KeyClassesRoot ? ClassesPath : std::u16string_view());
    return status;
}

Status OpenKeys::FindStart(Handle handle, std::u16string& path, PlacedKey& start) {
    const Status status = Find(handle, 0, start);
    if (status != StatusSuccess) {
        return status;
    }
    if (path.starts_with(u'\\')) {
        return StatusBadPathName;
    }
    const std::vector<std::u16string_view> levels = PathLevels(path);
    if (start.key != users_ || levels.empty() || !NameEqual()(levels.front(), CurrentUserName)) {
        return StatusSuccess;
    }
    path.erase(0, levels.front().size());
    return FindRoot(KeyCurrentUser, start);
}

Handle OpenKeys::Open(const PlacedKey& key, std::int32_t rights) {
    constexpr Handle step = 4;  // as Windows numbers them
    do {
        last_ = last_ > std::numeric_limits<Handle>::max() - step ? step : last_ + step;
    } while (open_.contains(last_));
    open_.emplace(last_, OpenKey{key.journal, key.key, rights});
    return last_;
}

Status OpenKeys::Close(Handle handle) {
    return IsRoot(handle) || open_.erase(handle) == 1 ? StatusSuccess : StatusInvalidHandle;
}

}  // namespace platform::host
