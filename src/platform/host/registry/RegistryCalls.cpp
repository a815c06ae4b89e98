#include "platform/RegistryCalls.h"

#include <SQLiteCpp/Transaction.h>

#include <algorithm>
#include <map>
#include <utility>

#include "platform/Bytes.h"
#include "platform/Regional.h"
#include "platform/host/HandleTable.h"
#include "platform/host/Machine.h"
#include "platform/host/Unicode.h"
#include "platform/host/registry/RegistryFile.h"

namespace platform {

namespace {

using host::Database;
using host::OpenKey;
using host::Query;
using host::RegistryFailure;

constexpr Status StatusBadPathName = 161;  // ERROR_BAD_PATHNAME

// Limits set by Windows, in characters.
constexpr std::size_t LongestKeyName = 255;
constexpr std::size_t LongestValueName = 16383;

// Each statement is a transaction. A select returns no row if its key was deleted, and NULL for a missing subkey or
// value.
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

RegistryFailure latestFailure;  // status and description of the last failed call, for StatusText

// Returns the key's file in the current machine folder.
host::RegistryFile& FileOf(const OpenKey& key) {
    static std::map<std::string, host::RegistryFile> files;
    const std::string path = host::MachineFolder().native() + (key.isUsers ? "/user.db" : "/machine.db");
    return files.try_emplace(path, path, key.isUsers ? "HKEY_CURRENT_USER" : "HKEY_LOCAL_MACHINE").first->second;
}

void RefuseUnless(bool condition, Status status) {
    if (!condition) {
        throw RegistryFailure{status};
    }
}

// Returns a name or path up to its terminator.
std::u16string NameFrom(const std::string& name) {
    return TextFromAnsi(name.substr(0, name.find('\0')));
}

// Converts a name to the form used for comparison.
std::string Folded(const std::u16string& name) {
    return host::ToUtf8(CharUpperW(name));
}

// Returns a path with one "\" before each level, and without empty levels.
std::u16string LevelsOf(const std::string& path) {
    std::u16string levels = u'\\' + NameFrom(path);
    const auto bothSeparators = [](char16_t one, char16_t next) { return one == u'\\' && next == u'\\'; };
    levels.erase(std::unique(levels.begin(), levels.end(), bothSeparators), levels.end());
    return levels.substr(0, levels.find_last_not_of(u'\\') + 1);
}

// Returns the key that a handle refers to, or null if the handle is invalid. The key may have been deleted.
const OpenKey* FindOpenKey(Handle handle) {
    constexpr std::int32_t allRights = -1;
    static const std::map<Handle, OpenKey> roots = {
        {KeyClassesRoot, {false, host::ClassesKey, allRights}},
        {KeyCurrentUser, {true, host::RootKey, allRights}},
        {KeyLocalMachine, {false, host::RootKey, allRights}},
        {KeyUsers, {true, host::UsersKey, KeyQueryValue | KeyEnumerateSubKeys}}};
    const auto root = roots.find(handle);
    return root == roots.end() ? std::get_if<OpenKey>(host::HandleFind(handle)) : &root->second;
}

// Returns the key that a handle refers to. Throws 6 if the handle is invalid, 5 if it lacks one of `rights`.
OpenKey KeyOf(Handle handle, std::int32_t rights) {
    const OpenKey* const key = FindOpenKey(handle);
    RefuseUnless(key != nullptr, StatusInvalidHandle);
    RefuseUnless((rights & ~key->rights) == 0, StatusAccessDenied);
    return *key;
}

// Runs the steps of a call on `handle`. Returns success, or the status of the failure that ended the steps.
template <typename Steps>
Status RunCall(Handle handle, const Steps& steps) {
    try {
        steps();
        return StatusSuccess;
    } catch (const RegistryFailure& failure) {
        latestFailure = failure;
    } catch (const SQLite::Exception& exception) {
        latestFailure = FileOf(KeyOf(handle, 0)).FailureFrom(exception);
    }
    return latestFailure.status;
}

// Returns the id of the key at `levels` below `start`, or 0 if it is missing. Throws 1018 if `start` was deleted. If
// the keys haven't changed, looking up a key again takes no transaction.
std::int64_t KeyBelow(Database& database, std::int64_t start, const std::u16string& levels) {
    const std::pair place(start, Folded(levels));
    const auto found = database.foundKeys.find(place);
    if (found != database.foundKeys.end() && database.foundVersion == database.KeyVersion()) {
        return found->second;
    }
    Query query(database, SelectKeyBelow, place.first, place.second);
    RefuseUnless(query->executeStep(), StatusKeyDeleted);
    if (const std::uint32_t version = database.KeyVersion(); std::exchange(database.foundVersion, version) != version) {
        database.foundKeys.clear();
    }
    return database.foundKeys[place] = query->getColumn(0);
}

// Returns the key at `path` below the handle's key, with id 0 if it is missing. Requires no access rights.
OpenKey FindKey(Handle handle, const std::string& path) {
    OpenKey key = KeyOf(handle, 0);
    key.key = KeyBelow(FileOf(key).ForReading(), key.key, LevelsOf(path));
    RefuseUnless(!path.starts_with('\\') || handle == KeyClassesRoot, StatusBadPathName);
    return key;
}

// Creates all missing levels below `start` in one transaction and returns the last level.
OpenKey CreateKey(OpenKey start, const std::u16string& levels) {
    Database& database = FileOf(start).ForWriting();
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    for (std::size_t end = 0; end < levels.size();) {
        const std::size_t begin = std::exchange(end, std::min(levels.find(u'\\', end + 1), levels.size()));
        const std::u16string level = levels.substr(begin, end - begin);
        RefuseUnless(level.size() <= LongestKeyName + 1, StatusInvalidParameter);
        const std::int64_t parent = std::exchange(start.key, KeyBelow(database, start.key, level));
        if (start.key == 0) {
            RefuseUnless(parent != host::UsersKey, StatusAccessDenied);
            Query(database, InsertSubKey, parent, host::ToUtf8(level.substr(1)), Folded(level))->exec();
            start.key = database.getLastInsertRowid();
        }
    }
    transaction.commit();
    return start;
}

// Returns a new handle to the key with exactly the rights in `access`. Throws 2 if the key is missing.
Handle OpenHandle(const OpenKey& key, std::int32_t access) {
    RefuseUnless(key.key != 0, StatusFileNotFound);
    if ((access & (KeySetValue | KeyCreateSubKey)) != 0) {
        RefuseUnless(key.key != host::UsersKey, StatusAccessDenied);
        FileOf(key).RequireWritable();
    }
    return host::HandleAdd(OpenKey{key.isUsers, key.key, access});
}

// Binds a value's data: 32-bit numbers as integers, strings as text without their terminator, and other data as blobs.
// SQLite's own shell can therefore show numbers and strings.
void BindData(Query& query, int parameter, std::uint32_t type, const std::string& bytes) {
    const bool isText = type == RegSz || type == RegExpandSz;
    if (isText && !bytes.empty() && bytes.find('\0') == bytes.size() - 1) {
        query->bind(parameter, host::ToUtf8(TextFromAnsi(bytes.substr(0, bytes.size() - 1))));
    } else if (type == RegDword && bytes.size() == sizeof(std::uint32_t)) {
        query->bind(parameter, NumberFromBytes(bytes));
    } else {
        query->bind(parameter, bytes.data(), static_cast<int>(bytes.size()));
    }
}

// Returns data that BindData stored.
std::string DataOf(const SQLite::Column& column) {
    if (column.isInteger()) {
        return BytesFromNumber(column.getUInt());
    }
    return column.isText() ? AnsiFromText(host::FromUtf8(column.getString())) + '\0' : column.getString();
}

// Copies a value's data to the caller's buffer and its size to `size`. Throws 234 if the buffer is too small.
void CopyData(const std::string& data, std::span<char> buffer, std::uint32_t& size) {
    const std::size_t capacity = std::min<std::size_t>(size, buffer.size());
    size = static_cast<std::uint32_t>(data.size());
    RefuseUnless(data.size() <= capacity, StatusMoreData);
    std::ranges::copy(data, buffer.begin());
}

// Copies a name and its terminator to the caller's buffer, and the length of the name to `size`.
void CopyName(const std::string& name, std::span<char> buffer, std::uint32_t& size) {
    const std::string bytes = AnsiFromText(host::FromUtf8(name));
    RefuseUnless(bytes.size() < std::min<std::size_t>(size, buffer.size()), StatusMoreData);
    *std::ranges::copy(bytes, buffer.begin()).out = '\0';
    size = static_cast<std::uint32_t>(bytes.size());
}

}  // namespace

Status RegOpenKeyExA(Handle key, const std::string& subKey, std::uint32_t /*options*/, std::int32_t access,
                     Handle& opened) {
    opened = 0;
    return RunCall(key, [&] { opened = OpenHandle(FindKey(key, subKey), access); });
}

Status RegCloseKey(Handle key) noexcept {
    if (FindOpenKey(key) == nullptr) {
        return StatusInvalidHandle;
    }
    host::HandleRemove(key);  // no effect on a predefined key
    return StatusSuccess;
}

Status RegCreateKeyExA(Handle key, const std::string& subKey, const std::string& /*className*/,
                       std::uint32_t /*options*/, std::int32_t access, Handle& created, std::uint32_t& disposition) {
    created = 0;
    return RunCall(key, [&] {
        const OpenKey found = FindKey(key, subKey);
        created = OpenHandle(found.key != 0 ? found : CreateKey(KeyOf(key, 0), LevelsOf(subKey)), access);
        disposition = found.key != 0 ? 2 : 1;
    });
}

Status RegDeleteKeyA(Handle key, const std::string& subKey) {
    return RunCall(key, [&] {
        const OpenKey found = FindKey(key, subKey);
        RefuseUnless(found.key != 0, StatusFileNotFound);
        Database& database = FileOf(found).ForWriting();
        if (found.key <= host::ClassesKey || Query(database, DeleteKeyWithoutSubKeys, found.key)->exec() == 0) {
            const bool isMissing = FindKey(key, subKey).key == 0;  // true if another process deleted the key
            throw RegistryFailure{isMissing ? StatusFileNotFound : StatusAccessDenied};
        }
    });
}

Status RegDeleteValueA(Handle key, const std::string& name) {
    return RunCall(key, [&] {
        const OpenKey open = KeyOf(key, KeySetValue);
        Database& database = FileOf(open).ForWriting();
        KeyBelow(database, open.key, {});
        RefuseUnless(Query(database, DeleteValue, open.key, Folded(NameFrom(name)))->exec() != 0, StatusFileNotFound);
    });
}

Status RegEnumKeyExA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize,
                     std::span<char> className, std::uint32_t& classSize) {
    return RunCall(key, [&] {
        const OpenKey open = KeyOf(key, KeyEnumerateSubKeys);
        Query subKey(FileOf(open).ForReading(), SelectSubKeyAt, open.key, index);
        RefuseUnless(subKey->executeStep(), StatusKeyDeleted);
        RefuseUnless(index >= 0 && !subKey->isColumnNull(0), StatusNoMoreItems);
        CopyName({}, className, classSize);  // keys on the host have no class
        CopyName(subKey->getColumn(0), name, nameSize);
    });
}

Status RegEnumValueA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize, std::uint32_t& type,
                     std::span<char> data, std::uint32_t& dataSize) {
    return RunCall(key, [&] {
        const OpenKey open = KeyOf(key, KeyQueryValue);
        Query value(FileOf(open).ForReading(), SelectValueAt, open.key, index);
        RefuseUnless(value->executeStep(), StatusKeyDeleted);
        RefuseUnless(index >= 0 && !value->isColumnNull(0), StatusNoMoreItems);
        CopyData(DataOf(value->getColumn(1)), data, dataSize);
        CopyName(value->getColumn(2), name, nameSize);
        type = value->getColumn(0);
    });
}

Status RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::span<char> data,
                        std::uint32_t& dataSize) {
    return RunCall(key, [&] {
        const OpenKey open = KeyOf(key, KeyQueryValue);
        Query value(FileOf(open).ForReading(), SelectValue, open.key, Folded(NameFrom(name)));
        RefuseUnless(value->executeStep(), StatusKeyDeleted);
        RefuseUnless(!value->isColumnNull(0), StatusFileNotFound);
        CopyData(DataOf(value->getColumn(1)), data, dataSize);
        type = value->getColumn(0);
    });
}

Status RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, std::string_view data) {
    return RunCall(key, [&] {
        const std::u16string valueName = NameFrom(name);
        RefuseUnless(valueName.size() <= LongestValueName, StatusInvalidParameter);
        const OpenKey open = KeyOf(key, KeySetValue);
        Database& database = FileOf(open).ForWriting();
        Query query(database, InsertValue, open.key, host::ToUtf8(valueName), Folded(valueName), type);
        BindData(query, 5, type, StoredData(type, data));
        const int pagesBefore = database.PagesWritten();
        RefuseUnless(query->exec() != 0, StatusKeyDeleted);
        database.ownValueChanges += database.PagesWritten() != pagesBefore ? 1 : 0;
    });
}

std::u16string host::RegistryStatusText(Status status) {
    return status == latestFailure.status ? latestFailure.description : std::u16string();
}

}  // namespace platform
