#include "platform/RegistryCalls.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Regional.h"
#include "platform/host/registry/OpenKeys.h"

namespace platform {

namespace {

using host::OpenKeys;
using host::PlacedKey;
using host::RegistryKey;
using host::RegistryValue;

// A name as the calls take it: up to its terminator.
std::u16string NameFrom(const std::string& name) {
    return TextFromAnsi(name.substr(0, name.find('\0')));
}

bool IsText(std::uint32_t type) {
    return type == RegSz || type == RegExpandSz || type == RegMultiSz;
}

RegistryValue StoredValue(std::uint32_t type, std::string_view data) {
    if (!IsText(type)) {
        return {type, std::string(data)};
    }
    std::u16string text = TextFromAnsi(std::string(data));
    if (type != RegMultiSz && !text.empty() && text.back() != u'\0') {
        text += u'\0';
    }
    RegistryValue value{type, {}};
    value.data.reserve(2 * text.size());
    for (const char16_t character : text) {
        value.data += static_cast<char>(character & 0xFF);
        value.data += static_cast<char>(character >> 8);
    }
    return value;
}

// The data as the caller gets it: texts in the code page.
std::string DeliveredData(const RegistryValue& value) {
    if (!IsText(value.type)) {
        return value.data;
    }
    std::u16string text;
    text.reserve(value.data.size() / 2);
    for (std::size_t at = 0; at + 1 < value.data.size(); at += 2) {
        text += static_cast<char16_t>(static_cast<std::uint8_t>(value.data[at]) |
                                      static_cast<std::uint8_t>(value.data[at + 1]) << 8);
    }
    return AnsiFromText(text);
}

// Without a buffer at all the data's size is asked for, and that succeeds.
Status DeliverData(const RegistryValue& value, std::span<char> buffer, std::uint32_t& size) {
    const std::string data = DeliveredData(value);
    const std::size_t room = std::min<std::size_t>(size, buffer.size());
    size = static_cast<std::uint32_t>(data.size());
    if (buffer.data() == nullptr) {
        return StatusSuccess;
    }
    if (data.size() > room) {
        return StatusMoreData;
    }
    std::copy(data.begin(), data.end(), buffer.begin());
    return StatusSuccess;
}

Status DeliverName(const std::u16string& name, std::span<char> buffer, std::uint32_t& size) {
    const std::string bytes = AnsiFromText(name);
    if (bytes.size() >= std::min<std::size_t>(size, buffer.size())) {
        return StatusMoreData;
    }
    *std::copy(bytes.begin(), bytes.end(), buffer.begin()) = '\0';
    size = static_cast<std::uint32_t>(bytes.size());
    return StatusSuccess;
}

// The path of a key that can be made: of levels not too long or too many, and without what a .reg file cannot say.
bool CanBeKey(std::u16string_view path) {
    const std::vector<std::u16string_view> levels = host::PathLevels(path);
    return levels.size() <= host::DeepestKey && path.find_first_of(u"\r\n") == std::u16string_view::npos &&
           std::all_of(levels.begin(), levels.end(),
                       [](std::u16string_view level) { return level.size() <= host::LongestKeyName; });
}

bool AsksForChanges(std::int32_t access) {
    return (access & (KeySetValue | KeyCreateSubKey)) != 0;
}

// Appends the change that `change` makes of the key, which another process may have deleted by then.
Status Change(PlacedKey& place, const std::function<Status(const RegistryKey::Pointer&, std::string&)>& change) {
    if (!place.IsWritable()) {
        return StatusAccessDenied;
    }
    const std::weak_ptr<RegistryKey> open = std::exchange(place.key, nullptr);
    return place.journal->Append([&](std::string& fragment) {
        const RegistryKey::Pointer key = open.lock();
        return key == nullptr ? StatusKeyDeleted : change(key, fragment);
    });
}

// Makes the key at `path` below `place`, which then is that key; `missing` is false when another process was faster.
Status MakeKey(PlacedKey& place, std::u16string_view path, bool& missing) {
    std::u16string whole = place.key->Path();
    for (const std::u16string_view level : host::PathLevels(path)) {
        whole.append(whole.empty() ? u"" : u"\\").append(level);
    }
    if (!CanBeKey(whole)) {
        return StatusInvalidParameter;
    }
    const Status status = Change(place, [&](const RegistryKey::Pointer& parent, std::string& fragment) {
        missing = host::KeyAt(parent, path) == nullptr;
        fragment = missing ? place.journal->MadeKey(whole) : std::string();
        return StatusSuccess;
    });
    if (status == StatusSuccess) {
        place.key = host::KeyAt(place.journal->Root(), whole);
    }
    return status;
}

}  // namespace

Status RegOpenKeyExA(Handle key, const std::string& subKey, std::uint32_t /*options*/, std::int32_t access,
                     Handle& opened) {
    opened = 0;
    OpenKeys& keys = OpenKeys::OfMachine();
    std::u16string path = NameFrom(subKey);
    PlacedKey found;
    if (const Status status = keys.FindStart(key, path, found); status != StatusSuccess) {
        return status;
    }
    found.key = host::KeyAt(found.key, path);
    if (found.key == nullptr) {
        return StatusFileNotFound;
    }
    if (AsksForChanges(access) && !found.IsWritable()) {
        return StatusAccessDenied;
    }
    opened = keys.Open(found, access);
    return StatusSuccess;
}

Status RegCloseKey(Handle key) noexcept {
    return OpenKeys::OfMachine().Close(key);
}

Status RegCreateKeyExA(Handle key, const std::string& subKey, const std::string& /*className*/,
                       std::uint32_t /*options*/, std::int32_t access, Handle& created, std::uint32_t& disposition) {
    constexpr std::uint32_t createdNew = 1;
    constexpr std::uint32_t openedExisting = 2;
    created = 0;
    OpenKeys& keys = OpenKeys::OfMachine();
    std::u16string path = NameFrom(subKey);
    PlacedKey place;
    if (const Status status = keys.FindStart(key, path, place); status != StatusSuccess) {
        return status;
    }
    const RegistryKey::Pointer there = host::KeyAt(place.key, path);
    bool missing = there == nullptr;
    if (missing) {
        if (const Status status = MakeKey(place, path, missing); status != StatusSuccess) {
            return status;
        }
    } else if (AsksForChanges(access) && !place.IsWritable()) {
        return StatusAccessDenied;
    } else {
        place.key = there;
    }
    created = keys.Open(place, access);
    disposition = missing ? createdNew : openedExisting;
    return StatusSuccess;
}

Status RegDeleteKeyA(Handle key, const std::string& subKey) {
    std::u16string path = NameFrom(subKey);
    PlacedKey place;
    if (const Status status = OpenKeys::OfMachine().FindStart(key, path, place); status != StatusSuccess) {
        return status;
    }
    if (host::KeyAt(place.key, path) == nullptr) {
        return StatusFileNotFound;
    }
    return Change(place, [&](const RegistryKey::Pointer& start, std::string& fragment) {
        const RegistryKey::Pointer deleted = host::KeyAt(start, path);
        if (deleted == nullptr) {
            return StatusFileNotFound;
        }
        if (deleted->SubKeyCount() > 0 || place.journal->IsLasting(*deleted)) {
            return StatusAccessDenied;
        }
        fragment = place.journal->DeletedKey(*deleted);
        return StatusSuccess;
    });
}

Status RegDeleteValueA(Handle key, const std::string& name) {
    PlacedKey place;
    if (const Status status = OpenKeys::OfMachine().Find(key, KeySetValue, place); status != StatusSuccess) {
        return status;
    }
    const std::u16string valueName = NameFrom(name);
    if (place.key->Value(valueName) == nullptr) {
        return StatusFileNotFound;
    }
    return Change(place, [&](const RegistryKey::Pointer& open, std::string& fragment) {
        if (open->Value(valueName) == nullptr) {
            return StatusFileNotFound;
        }
        fragment = place.journal->HeadFor(open) + host::RegFileDeletedValue(valueName);
        return StatusSuccess;
    });
}

Status RegEnumKeyExA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize,
                     std::span<char> className, std::uint32_t& classSize) {
    PlacedKey place;
    if (const Status status = OpenKeys::OfMachine().Find(key, KeyEnumerateSubKeys, place); status != StatusSuccess) {
        return status;
    }
    const RegistryKey::Pointer subKey = index < 0 ? nullptr : place.key->SubKeyAt(static_cast<std::size_t>(index));
    if (subKey == nullptr) {
        return StatusNoMoreItems;
    }
    const Status status = DeliverName(subKey->Name(), name, nameSize);
    if (status == StatusSuccess) {  // no key of the host has a class
        classSize = 0;
        std::fill_n(className.begin(), std::min<std::size_t>(className.size(), 1), '\0');
    }
    return status;
}

Status RegEnumValueA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize, std::uint32_t& type,
                     std::span<char> data, std::uint32_t& dataSize) {
    PlacedKey place;
    if (const Status status = OpenKeys::OfMachine().Find(key, KeyQueryValue, place); status != StatusSuccess) {
        return status;
    }
    const RegistryKey::NamedValue* const value =
        index < 0 ? nullptr : place.key->ValueAt(static_cast<std::size_t>(index));
    if (value == nullptr) {
        return StatusNoMoreItems;
    }
    Status status = DeliverData(value->second, data, dataSize);
    if (status == StatusSuccess) {
        status = DeliverName(value->first, name, nameSize);
    }
    if (status == StatusSuccess) {
        type = value->second.type;
    }
    return status;
}

Status RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::span<char> data,
                        std::uint32_t& dataSize) {
    PlacedKey place;
    if (const Status status = OpenKeys::OfMachine().Find(key, KeyQueryValue, place); status != StatusSuccess) {
        return status;
    }
    const RegistryValue* const value = place.key->Value(NameFrom(name));
    if (value == nullptr) {
        return StatusFileNotFound;
    }
    const Status status = DeliverData(*value, data, dataSize);
    if (status == StatusSuccess) {
        type = value->type;
    }
    return status;
}

Status RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, std::string_view data) {
    PlacedKey place;
    if (const Status status = OpenKeys::OfMachine().Find(key, KeySetValue, place); status != StatusSuccess) {
        return status;
    }
    const std::u16string valueName = NameFrom(name);
    if (valueName.size() > host::LongestValueName) {
        return StatusInvalidParameter;
    }
    const RegistryValue value = StoredValue(type, data);
    return Change(place, [&](const RegistryKey::Pointer& open, std::string& fragment) {
        const RegistryValue* const stored = open->Value(valueName);
        if (stored == nullptr || *stored != value) {
            fragment = place.journal->HeadFor(open) + host::RegFileValue(valueName, value);
        }
        return StatusSuccess;
    });
}

}  // namespace platform
