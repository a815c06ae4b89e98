#include "platform/RegistryCalls.h"

#include <SQLiteCpp/Transaction.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>
#include <optional>
#include <sstream>
#include <vector>

#include "platform/Regional.h"
#include "platform/host/HandleTable.h"
#include "platform/host/Machine.h"
#include "platform/host/registry/RegistryFile.h"

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

// Each statement is a transaction. It gives no row when its key is gone, and null for what is missing there.
constexpr const char* SelectKeyBelow =
    "SELECT found.id FROM key AS start LEFT JOIN key AS found ON found.path = start.path || ?2 WHERE start.id = ?1";
constexpr const char* InsertSubKey =
    "INSERT INTO key (parent, name, path) SELECT id, ?2, path || ?3 FROM key WHERE id = ?1";
constexpr const char* DeleteKeyWithoutSubKeys =
    "DELETE FROM key WHERE id = ?1 AND NOT EXISTS (SELECT 1 FROM key WHERE parent = ?1)";
constexpr const char* SelectSubKeyAt =
    "SELECT (SELECT name FROM key WHERE parent = ?1 ORDER BY path LIMIT 1 OFFSET ?2) FROM key WHERE id = ?1";
constexpr const char* SelectValue =
    "SELECT type, data FROM key LEFT JOIN value ON key = id AND folded = ?2 WHERE id = ?1";
constexpr const char* SelectValueAt =
    "SELECT type, data, name FROM (SELECT 1 FROM key WHERE id = ?1) LEFT JOIN"
    " (SELECT * FROM value WHERE key = ?1 ORDER BY position LIMIT 1 OFFSET ?2)";
constexpr const char* InsertValue =
    "INSERT INTO value (key, position, name, folded, type, data)"
    " SELECT id, (SELECT coalesce(max(position), 0) + 1 FROM value WHERE key = ?1), ?2, ?3, ?4, ?5"
    " FROM key WHERE id = ?1"
    " ON CONFLICT (key, folded) DO UPDATE SET type = excluded.type, data = excluded.data";
constexpr const char* DeleteValue = "DELETE FROM value WHERE key = ? AND folded = ?";

// The file that the latest call looked at.
host::RegistryFile* lastFile = nullptr;

// The file of the key, in the folder that is the machine at this moment.
host::RegistryFile& FileOf(const OpenKey& key) {
    static std::filesystem::path machine;
    static std::map<bool, host::RegistryFile> files;
    if (const std::filesystem::path folder = host::MachineFolder(); folder.native() != machine.native()) {
        machine = folder;
        files.clear();
        files.try_emplace(false, folder / "machine.db", u"HKEY_LOCAL_MACHINE");
        files.try_emplace(true, folder / "user.db", u"HKEY_CURRENT_USER");
    }
    lastFile = &files.at(key.isUsers);
    return *lastFile;
}

void RefuseUnless(bool condition, Status status) {
    if (!condition) {
        throw RegistryFailure{status};
    }
}

// Runs the steps of a call and gives the status that ended them.
template <typename Steps>
Status StatusOf(Steps&& steps) {
    errno = 0;
    try {
        steps();
        return StatusSuccess;
    } catch (const RegistryFailure& failure) {
        return failure.status;
    } catch (const SQLite::Exception& failure) {
        return lastFile->StatusOf(failure);
    }
}

std::u16string ValueName(const std::string& name, Status refusalOfLongOne) {
    std::u16string valueName = TextFromAnsi(name.substr(0, name.find('\0')));  // up to its terminator
    RefuseUnless(valueName.size() <= LongestValueName, refusalOfLongOne);
    return valueName;
}

// The levels of a path, without the empty ones between and behind its "\".
Levels LevelsFrom(const std::string& path) {
    Levels levels;
    std::istringstream names(path.substr(0, path.find('\0')));
    for (std::string name; std::getline(names, name, '\\');) {
        if (!name.empty()) {
            levels.push_back(TextFromAnsi(name));
        }
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

// The key at `levels` below `start`, 0 when it is missing.
std::int64_t KeyBelow(Database& database, std::int64_t start, std::span<const std::u16string> levels) {
    std::u16string path;
    for (const std::u16string& level : levels) {
        path += u'\\' + CharUpperW(level);
    }
    Query query(database, SelectKeyBelow, start, path);
    RefuseUnless(query.Step(), StatusKeyDeleted);
    return query.Number(0);
}

// The key that `path` leads to from a handle, which needs no rights; key 0 when it is missing.
OpenKey FoundKey(Handle handle, const std::string& path) {
    OpenKey key = KeyOf(handle, 0);
    key.key = KeyBelow(FileOf(key).ForReading(), key.key, LevelsFrom(path));
    RefuseUnless(!path.starts_with('\\') || handle == KeyClassesRoot, StatusBadPathName);
    return key;
}

// The key at `levels` below `start`, with every level made that is missing.
OpenKey CreatedKey(OpenKey start, const Levels& levels) {
    RefuseUnless(std::ranges::all_of(levels, [](const auto& level) { return level.size() <= LongestKeyName; }),
                 StatusInvalidParameter);
    Database& database = FileOf(start).ForWriting();
    SQLite::Transaction transaction(database.Connection(), SQLite::TransactionBehavior::IMMEDIATE);
    for (const std::u16string& level : levels) {
        const std::int64_t parent = start.key;
        start.key = KeyBelow(database, parent, {&level, 1});
        if (start.key == 0) {
            RefuseUnless(parent != host::UsersKey, StatusAccessDenied);
            Query(database, InsertSubKey, parent, level, u'\\' + CharUpperW(level)).Run();
            start.key = database.Connection().getLastInsertRowid();
        }
    }
    transaction.commit();
    return start;
}

Handle OpenedHandle(const OpenKey& key, std::int32_t access) {
    if ((access & (KeySetValue | KeyCreateSubKey)) != 0) {
        RefuseUnless(key.key != host::UsersKey && FileOf(key).IsWritable(), StatusAccessDenied);
    }
    return host::HandleAdd(OpenKey{key.isUsers, key.key, access});
}

void DeliverData(const std::string& data, std::span<char> buffer, std::uint32_t& size) {
    const std::size_t room = std::min<std::size_t>(size, buffer.size());
    size = static_cast<std::uint32_t>(data.size());
    RefuseUnless(data.size() <= room, StatusMoreData);
    std::ranges::copy(data, buffer.begin());
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
        const OpenKey found = FoundKey(key, subKey);
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
        const OpenKey found = FoundKey(key, subKey);
        created = OpenedHandle(found.key != 0 ? found : CreatedKey(KeyOf(key, 0), LevelsFrom(subKey)), access);
        disposition = found.key != 0 ? openedExisting : createdNew;
    });
}

Status RegDeleteKeyA(Handle key, const std::string& subKey) {
    return StatusOf([&] {
        const OpenKey found = FoundKey(key, subKey);
        RefuseUnless(found.key != 0, StatusFileNotFound);
        Database& database = FileOf(found).ForWriting();
        RefuseUnless(found.key > host::ClassesKey && Query(database, DeleteKeyWithoutSubKeys, found.key).Run(),
                     StatusAccessDenied);
    });
}

Status RegDeleteValueA(Handle key, const std::string& name) {
    return StatusOf([&] {
        const std::u16string folded = CharUpperW(ValueName(name, StatusFileNotFound));
        const OpenKey open = KeyOf(key, KeySetValue);
        Database& database = FileOf(open).ForWriting();
        KeyBelow(database, open.key, {});
        RefuseUnless(Query(database, DeleteValue, open.key, folded).Run(), StatusFileNotFound);
    });
}

Status RegEnumKeyExA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize,
                     std::span<char> className, std::uint32_t& classSize) {
    return StatusOf([&] {
        const OpenKey open = KeyOf(key, KeyEnumerateSubKeys);
        Query subKey(FileOf(open).ForReading(), SelectSubKeyAt, open.key, index);
        RefuseUnless(subKey.Step(), StatusKeyDeleted);
        RefuseUnless(index >= 0 && !subKey.IsNull(0), StatusNoMoreItems);
        DeliverName({}, className, classSize);  // no key of the host has a class
        DeliverName(subKey.Text(0), name, nameSize);
    });
}

Status RegEnumValueA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize, std::uint32_t& type,
                     std::span<char> data, std::uint32_t& dataSize) {
    return StatusOf([&] {
        const OpenKey open = KeyOf(key, KeyQueryValue);
        Query value(FileOf(open).ForReading(), SelectValueAt, open.key, index);
        RefuseUnless(value.Step(), StatusKeyDeleted);
        RefuseUnless(index >= 0 && !value.IsNull(0), StatusNoMoreItems);
        DeliverData(value.Bytes(1), data, dataSize);
        DeliverName(value.Text(2), name, nameSize);
        type = static_cast<std::uint32_t>(value.Number(0));
    });
}

Status RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::span<char> data,
                        std::uint32_t& dataSize) {
    return StatusOf([&] {
        const std::u16string folded = CharUpperW(ValueName(name, StatusFileNotFound));
        const OpenKey open = KeyOf(key, KeyQueryValue);
        Query value(FileOf(open).ForReading(), SelectValue, open.key, folded);
        RefuseUnless(value.Step(), StatusKeyDeleted);
        RefuseUnless(!value.IsNull(0), StatusFileNotFound);
        DeliverData(value.Bytes(1), data, dataSize);
        type = static_cast<std::uint32_t>(value.Number(0));
    });
}

Status RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, std::string_view data) {
    return StatusOf([&] {
        const std::u16string valueName = ValueName(name, StatusInvalidParameter);
        const OpenKey open = KeyOf(key, KeySetValue);
        Query query(FileOf(open).ForWriting(), InsertValue, open.key, valueName, CharUpperW(valueName), type,
                    host::TypedBytes{type, data});
        RefuseUnless(query.Run(), StatusKeyDeleted);
    });
}

std::u16string host::RegistryStatusText(Status status) {
    const std::u16string file = lastFile == nullptr ? std::u16string() : lastFile->Path().u16string();
    switch (status) {
        case StatusDatabaseDamaged:
            return u"Die Registrierungsdatei \"" + file + u"\" ist beschädigt oder keine Registrierung.";
        case StatusBusy:
            return u"Die Registrierungsdatei \"" + file + u"\" wird von einem anderen Programm gesperrt.";
        default:
            return {};
    }
}

}  // namespace platform
