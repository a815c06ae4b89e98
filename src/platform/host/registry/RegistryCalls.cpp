#include "platform/RegistryCalls.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <vector>

#include "platform/Regional.h"
#include "platform/host/HandleTable.h"
#include "platform/host/Machine.h"
#include "platform/host/registry/RegistryFile.h"
#include "platform/host/registry/RegistryStatusText.h"

namespace platform {

namespace {

using host::Database;
using host::OpenKey;
using host::Query;
using host::RegistryFailure;

using Levels = std::vector<std::u16string>;

constexpr Status StatusBadPathName = 161;  // ERROR_BAD_PATHNAME

// Windows' own limits, in characters.
constexpr std::size_t LongestKeyName = 255;
constexpr std::size_t LongestValueName = 16383;

constexpr const char* SelectKey = "SELECT 1 FROM key WHERE id = ?";
constexpr const char* SelectSubKey = "SELECT id FROM key WHERE parent = ? AND folded = ?";
constexpr const char* SelectAnySubKey = "SELECT 1 FROM key WHERE parent = ?";
constexpr const char* SelectSubKeyAt = "SELECT name FROM key WHERE parent = ? ORDER BY folded LIMIT 1 OFFSET ?";
constexpr const char* InsertSubKey = "INSERT INTO key (parent, name, folded) VALUES (?, ?, ?) RETURNING id";
constexpr const char* DeleteKey = "DELETE FROM key WHERE id = ?";
constexpr const char* DeleteValuesOfKey = "DELETE FROM value WHERE key = ?";
constexpr const char* SelectValue = "SELECT type, data FROM value WHERE key = ? AND folded = ?";
constexpr const char* SelectValueBehind =
    "SELECT type, data, name, position FROM value WHERE key = ? AND position > ? ORDER BY position LIMIT 1 OFFSET ?";
constexpr const char* DeleteValue = "DELETE FROM value WHERE key = ? AND folded = ? RETURNING 1";
constexpr const char* InsertValue =
    "INSERT INTO value (key, position, name, folded, type, data)"
    " SELECT ?1, coalesce(max(position), 0) + 1, ?2, ?3, ?4, ?5 FROM value WHERE key = ?1"
    " ON CONFLICT (key, folded) DO UPDATE SET type = excluded.type, data = excluded.data";

struct RegistryFiles {
    std::filesystem::path folder;
    host::RegistryFile machine;
    host::RegistryFile user;
};

// The file of the key, in the folder that is the machine at this moment.
host::RegistryFile& FileOf(const OpenKey& key) {
    static std::optional<RegistryFiles> files;
    if (const std::filesystem::path folder = host::MachineFolder();
        !files || files->folder.native() != folder.native()) {
        files.emplace(RegistryFiles{
            folder, {folder / "machine.db", u"HKEY_LOCAL_MACHINE"}, {folder / "user.db", u"HKEY_CURRENT_USER"}});
    }
    return key.isUsers ? files->user : files->machine;
}

void RefuseUnless(bool condition, Status status) {
    if (!condition) {
        throw RegistryFailure{status};
    }
}

std::string lastFailedFile;

// Runs the steps of a call and gives the status that ended them.
template <typename Steps>
Status StatusOf(Steps&& steps) {
    try {
        steps();
        return StatusSuccess;
    } catch (const RegistryFailure& failure) {
        if (!failure.file.empty()) {
            lastFailedFile = failure.file;
        }
        return failure.status;
    }
}

std::u16string Folded(const std::u16string& name) {
    return CharUpperW(name);
}

// A name as the calls take it: up to its terminator.
std::u16string NameFrom(const std::string& name) {
    return TextFromAnsi(name.substr(0, name.find('\0')));
}

// The levels of a path, without the empty ones between and behind its "\".
Levels LevelsFrom(const std::string& path) {
    Levels levels;
    bool isNew = true;
    for (const char16_t character : NameFrom(path)) {
        if (character != u'\\') {
            levels.resize(levels.size() + (isNew ? 1 : 0));
            levels.back() += character;
        }
        isNew = character == u'\\';
    }
    return levels;
}

std::optional<OpenKey> RootOf(Handle handle) {
    constexpr std::int32_t allRights = -1;
    switch (handle) {
        case KeyClassesRoot:
            return OpenKey{false, host::ClassesKey, allRights};
        case KeyCurrentUser:
            return OpenKey{true, host::RootKey, allRights};
        case KeyLocalMachine:
            return OpenKey{false, host::RootKey, allRights};
        case KeyUsers:
            return OpenKey{true, host::UsersKey, KeyQueryValue | KeyEnumerateSubKeys};
        default:
            return {};
    }
}

// The key of a handle that has all of `rights`; whether it is still there is not looked at.
OpenKey KeyOf(Handle handle, std::int32_t rights) {
    const std::optional<OpenKey> root = RootOf(handle);
    const OpenKey* const key = root ? &*root : host::HandleFindAs<OpenKey>(handle);
    RefuseUnless(key != nullptr, StatusInvalidHandle);
    RefuseUnless((rights & ~key->rights) == 0, StatusAccessDenied);
    return *key;
}

// One transaction of a call on a key that is there from its begin to its end; without a Commit it changes nothing.
struct KeyTransaction {
    enum class Kind { Read, Write };
    KeyTransaction(const OpenKey& key, Kind kind)
        : database(kind == Kind::Write ? FileOf(key).ForWriting() : FileOf(key).ForReading()) {
        Query(database, kind == Kind::Write ? "BEGIN IMMEDIATE" : "BEGIN").Step();
        if (!Query(database, SelectKey, key.key).Step()) {
            database.RollBack();
            throw RegistryFailure{StatusKeyDeleted};
        }
    }
    ~KeyTransaction() { database.RollBack(); }
    KeyTransaction(const KeyTransaction&) = delete;
    KeyTransaction& operator=(const KeyTransaction&) = delete;
    void Commit() const { Query(database, "COMMIT").Step(); }

    Database& database;
};

std::int64_t SubKey(Database& database, std::int64_t parent, const std::u16string& name) {
    Query query(database, SelectSubKey, parent, Folded(name));
    return query.Step() ? query.Number(0) : 0;
}

// The key at `levels` below `start`, which needs no rights there; key 0 when it is missing.
OpenKey FoundKey(OpenKey start, const Levels& levels) {
    KeyTransaction reading(start, KeyTransaction::Kind::Read);
    for (auto level = levels.begin(); level != levels.end() && start.key != 0; ++level) {
        start.key = SubKey(reading.database, start.key, *level);
    }
    return start;
}

// The same, with every level made that is missing.
OpenKey CreatedKey(OpenKey start, const Levels& levels) {
    RefuseUnless(std::ranges::all_of(levels, [](const auto& level) { return level.size() <= LongestKeyName; }),
                 StatusInvalidParameter);
    KeyTransaction writing(start, KeyTransaction::Kind::Write);
    for (const std::u16string& level : levels) {
        const std::int64_t parent = start.key;
        start.key = SubKey(writing.database, parent, level);
        if (start.key == 0) {
            RefuseUnless(parent != host::UsersKey, StatusAccessDenied);
            Query created(writing.database, InsertSubKey, parent, level, Folded(level));
            created.Step();
            start.key = created.Number(0);
        }
    }
    writing.Commit();
    return start;
}

// A new handle of the key, with the rights of `access`.
Handle OpenedHandle(const OpenKey& key, std::int32_t access) {
    const bool takesChanges = key.key != host::UsersKey && FileOf(key).IsWritable();
    RefuseUnless(takesChanges || (access & (KeySetValue | KeyCreateSubKey)) == 0, StatusAccessDenied);
    return host::HandleAdd(OpenKey{key.isUsers, key.key, access});
}

// Without a buffer at all the data's size is asked for, and that succeeds.
void DeliverData(const std::string& data, std::span<char> buffer, std::uint32_t& size) {
    const std::size_t room = std::min<std::size_t>(size, buffer.size());
    size = static_cast<std::uint32_t>(data.size());
    RefuseUnless(buffer.data() == nullptr || data.size() <= room, StatusMoreData);
    std::copy_n(data.begin(), buffer.data() == nullptr ? 0 : data.size(), buffer.begin());
}

void DeliverName(const std::u16string& name, std::span<char> buffer, std::uint32_t& size) {
    const std::string bytes = AnsiFromText(name);
    RefuseUnless(bytes.size() < std::min<std::size_t>(size, buffer.size()), StatusMoreData);
    *std::ranges::copy(bytes, buffer.begin()).out = '\0';
    size = static_cast<std::uint32_t>(bytes.size());
}

}  // namespace

Status RegOpenKeyExA(Handle key, const std::string& subKey, std::uint32_t /*options*/, std::int32_t access,
                     Handle& opened) {
    opened = 0;
    return StatusOf([&] {
        const OpenKey start = KeyOf(key, 0);
        RefuseUnless(!subKey.starts_with('\\'), StatusBadPathName);
        const OpenKey found = FoundKey(start, LevelsFrom(subKey));
        RefuseUnless(found.key != 0, StatusFileNotFound);
        opened = OpenedHandle(found, access);
    });
}

Status RegCloseKey(Handle key) noexcept {
    const bool closed = RootOf(key) || (host::HandleFindAs<OpenKey>(key) != nullptr && host::HandleRemove(key));
    return closed ? StatusSuccess : StatusInvalidHandle;
}

Status RegCreateKeyExA(Handle key, const std::string& subKey, const std::string& /*className*/,
                       std::uint32_t /*options*/, std::int32_t access, Handle& created, std::uint32_t& disposition) {
    constexpr std::uint32_t createdNew = 1;
    constexpr std::uint32_t openedExisting = 2;
    created = 0;
    return StatusOf([&] {
        const OpenKey start = KeyOf(key, 0);
        RefuseUnless(!subKey.starts_with('\\'), StatusBadPathName);
        const Levels levels = LevelsFrom(subKey);
        const OpenKey found = FoundKey(start, levels);
        created = OpenedHandle(found.key != 0 ? found : CreatedKey(start, levels), access);
        disposition = found.key != 0 ? openedExisting : createdNew;
    });
}

Status RegDeleteKeyA(Handle key, const std::string& subKey) {
    return StatusOf([&] {
        const OpenKey start = KeyOf(key, 0);
        RefuseUnless(!subKey.starts_with('\\'), StatusBadPathName);
        const OpenKey found = FoundKey(start, LevelsFrom(subKey));
        RefuseUnless(found.key != 0, StatusFileNotFound);
        KeyTransaction writing(found, KeyTransaction::Kind::Write);
        const bool hasSubKeys = Query(writing.database, SelectAnySubKey, found.key).Step();
        RefuseUnless(found.key > host::ClassesKey && !hasSubKeys, StatusAccessDenied);
        Query(writing.database, DeleteValuesOfKey, found.key).Step();
        Query(writing.database, DeleteKey, found.key).Step();
        writing.Commit();
    });
}

Status RegDeleteValueA(Handle key, const std::string& name) {
    return StatusOf([&] {
        const OpenKey open = KeyOf(key, KeySetValue);
        KeyTransaction writing(open, KeyTransaction::Kind::Write);
        const bool isDeleted = Query(writing.database, DeleteValue, open.key, Folded(NameFrom(name))).Step();
        RefuseUnless(isDeleted, StatusFileNotFound);
        writing.Commit();
    });
}

Status RegEnumKeyExA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize,
                     std::span<char> className, std::uint32_t& classSize) {
    return StatusOf([&] {
        const OpenKey open = KeyOf(key, KeyEnumerateSubKeys);
        KeyTransaction reading(open, KeyTransaction::Kind::Read);
        Query subKey(reading.database, SelectSubKeyAt, open.key, index);
        RefuseUnless(index >= 0 && subKey.Step(), StatusNoMoreItems);
        DeliverName(subKey.Text(0), name, nameSize);
        classSize = 0;  // no key of the host has a class
        std::fill_n(className.begin(), std::min<std::size_t>(className.size(), 1), '\0');
    });
}

Status RegEnumValueA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize, std::uint32_t& type,
                     std::span<char> data, std::uint32_t& dataSize) {
    return StatusOf([&] {
        const OpenKey open = KeyOf(key, KeyQueryValue);
        KeyTransaction reading(open, KeyTransaction::Kind::Read);
        const std::int64_t changes = reading.database.Changes();
        const bool goesOn = open.reached.changes == changes && open.reached.index < index;
        const OpenKey::ReachedValue from = goesOn ? open.reached : OpenKey::ReachedValue();
        Query value(reading.database, SelectValueBehind, open.key, from.position, index - from.index - 1);
        RefuseUnless(index >= 0 && value.Step(), StatusNoMoreItems);
        if (OpenKey* const kept = host::HandleFindAs<OpenKey>(key)) {
            kept->reached = {index, value.Number(3), changes};
        }
        DeliverData(value.Bytes(1), data, dataSize);
        DeliverName(value.Text(2), name, nameSize);
        type = static_cast<std::uint32_t>(value.Number(0));
    });
}

Status RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::span<char> data,
                        std::uint32_t& dataSize) {
    return StatusOf([&] {
        const OpenKey open = KeyOf(key, KeyQueryValue);
        KeyTransaction reading(open, KeyTransaction::Kind::Read);
        Query value(reading.database, SelectValue, open.key, Folded(NameFrom(name)));
        RefuseUnless(value.Step(), StatusFileNotFound);
        DeliverData(value.Bytes(1), data, dataSize);
        type = static_cast<std::uint32_t>(value.Number(0));
    });
}

Status RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, std::string_view data) {
    return StatusOf([&] {
        const OpenKey open = KeyOf(key, KeySetValue);
        const std::u16string valueName = NameFrom(name);
        RefuseUnless(valueName.size() <= LongestValueName, StatusInvalidParameter);
        KeyTransaction writing(open, KeyTransaction::Kind::Write);
        const host::TypedBytes stored{type, data};
        Query(writing.database, InsertValue, open.key, valueName, Folded(valueName), type, stored).Step();
        writing.Commit();
    });
}

namespace host {

std::u16string RegistryStatusText(Status status) {
    const std::u16string file = std::filesystem::path(lastFailedFile).u16string();
    switch (status) {
        case StatusDatabaseDamaged:
            return u"Die Registrierungsdatei \"" + file + u"\" ist beschädigt oder keine Registrierung.";
        case StatusBusy:
            return u"Die Registrierungsdatei \"" + file + u"\" wird von einem anderen Programm gesperrt.";
        default:
            return {};
    }
}

}  // namespace host

}  // namespace platform
