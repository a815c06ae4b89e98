#include "settings/Registry.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "common/Conversion.h"
#include "common/Error.h"
#include "platform/Bytes.h"
#include "platform/Regional.h"

namespace {

constexpr std::size_t EnumerationBufferSize = 255;
constexpr std::size_t ValueBufferSize = 1024;

// If `status` is a failure, raises it. The description is `prefix` followed by the pending description.
void RaiseOnFailure(platform::Status status, const Text& prefix = {}) {
    if (status != platform::StatusSuccess) {
        Raise(status, prefix + LastError().Description());
    }
}

// Returns the string in the buffer's first `byteCount` bytes. In UTF-8 and double-byte code pages, a character can take
// several bytes.
Text BufferText(const std::string& buffer, std::size_t byteCount) {
    return platform::TextFromAnsi(buffer.substr(0, byteCount));
}

// Returns the number in the buffer's first four bytes. Raises 6 (overflow) if it is 0x80000000 or more.
std::int32_t StoredNumber(const std::string& buffer) {
    const std::uint32_t number = platform::NumberFromBytes(buffer.substr(0, sizeof(std::uint32_t)));
    if (number > INT32_MAX) {
        Raise(RuntimeError::Overflow);
    }
    return static_cast<std::int32_t>(number);
}

}  // namespace

void Registry::KeyReset() noexcept {
    accessMode_ = platform::KeyQueryValue;
    hKey_ = 0;
    key_.clear();
    hCurrentKey_ = 0;
    subKey_.clear();
    valueName_.clear();
}

void Registry::KeyClose() noexcept {
    platform::RegCloseKey(hCurrentKey_);
    KeyReset();
}

void Registry::KeyOpen(platform::Handle hKey, const Text& szKey, bool force) {
    hKey_ = hKey;
    key_ = szKey;
    KeyAccess(0, force);
}

// Opens the key with the rights in AccessMode. If the key is already open but lacks rights in `accessMode`, adds these
// rights and reopens the key.
void Registry::KeyAccess(std::int32_t accessMode, bool force) {
    if (hCurrentKey_ != 0) {
        if ((accessMode_ & accessMode) == accessMode) {
            return;
        }
        platform::RegCloseKey(hCurrentKey_);
        hCurrentKey_ = 0;
        accessMode_ |= accessMode;
    }
    const std::string subKey = platform::AnsiFromText(key_);
    platform::Status status = platform::RegOpenKeyExA(hKey_, subKey, 0, accessMode_, hCurrentKey_);
    if (hCurrentKey_ == 0 && force) {
        CreateFromRoot();
        status = platform::RegOpenKeyExA(hKey_, subKey, 0, accessMode_, hCurrentKey_);
    }
    if (hCurrentKey_ == 0) {
        const Text path = key_;
        KeyClose();
        Raise(status, u"Key not opened: " + path);
    }
}

// Creates the key `key_` below the root. Clears `key_` temporarily, so that adding rights reopens the root and not the
// missing key. Closes the handle only if the root was reopened; `hKey_` itself belongs to the caller.
void Registry::CreateFromRoot() {
    hCurrentKey_ = hKey_;
    const Text path = key_;
    key_.clear();
    SubKeyCreate(path);
    key_ = path;
    if (hCurrentKey_ != hKey_) {
        platform::RegCloseKey(hCurrentKey_);
    }
    hCurrentKey_ = 0;
}

// Ends an enumeration step: advances the index, sets the name and the end flag, and raises any status other than 0 and
// 259 (no more items).
void Registry::EnumerationStep(platform::Status status, const std::string& buffer, std::uint32_t size,
                               std::int32_t& index, Text& name, bool& end) {
    ++index;
    end = status != platform::StatusSuccess;
    name = end ? Text() : BufferText(buffer, size);
    RaiseOnFailure(status == platform::StatusNoMoreItems ? platform::StatusSuccess : status);
}

void Registry::SubKeyFirst() {
    subKeyIndex_ = 0;
    subKey_.clear();
    SubKeyNext();
}

void Registry::SubKeyNext() {
    KeyAccess(platform::KeyEnumerateSubKeys, false);
    std::string name(EnumerationBufferSize, ' ');
    std::string className(EnumerationBufferSize, ' ');
    std::uint32_t nameSize = EnumerationBufferSize;
    std::uint32_t classSize = EnumerationBufferSize;
    const platform::Status status =
        platform::RegEnumKeyExA(hCurrentKey_, subKeyIndex_, name, nameSize, className, classSize);
    EnumerationStep(status, name, nameSize, subKeyIndex_, subKey_, eofSubKey_);
}

void Registry::SubKeyCreate(const Text& newSubKey) {
    KeyAccess(platform::KeyCreateSubKey, false);
    platform::Handle created = 0;
    std::uint32_t disposition = 0;
    RaiseOnFailure(platform::RegCreateKeyExA(hCurrentKey_, platform::AnsiFromText(newSubKey), "", 0,
                                             platform::KeyCreateSubKey, created, disposition));
    platform::RegCloseKey(created);
}

void Registry::SubKeyDelete(const Text& key) {
    KeyAccess(platform::KeyCreateSubKey, false);
    RaiseOnFailure(platform::RegDeleteKeyA(hCurrentKey_, platform::AnsiFromText(key)), u"Error ");
}

void Registry::ValueNameFirst() {
    valueNameIndex_ = 0;
    valueName_.clear();
    ValueNameNext();
}

void Registry::ValueNameNext() {
    KeyAccess(platform::KeyEnumerateSubKeys, false);
    std::string name(EnumerationBufferSize, ' ');
    std::string data(EnumerationBufferSize, ' ');
    std::uint32_t nameSize = EnumerationBufferSize;
    std::uint32_t dataSize = EnumerationBufferSize;
    std::uint32_t type = 0;
    const platform::Status status =
        platform::RegEnumValueA(hCurrentKey_, valueNameIndex_, name, nameSize, type, data, dataSize);
    EnumerationStep(status, name, nameSize, valueNameIndex_, valueName_, eofValueName_);
}

void Registry::ValueNameDelete(const Text& name) {
    KeyAccess(platform::KeySetValue, false);
    RaiseOnFailure(platform::RegDeleteValueA(hCurrentKey_, platform::AnsiFromText(name)), u"Error ");
}

Variant Registry::Value(const Text& name) {
    KeyAccess(platform::KeyQueryValue, false);
    std::string buffer(ValueBufferSize, ' ');
    std::uint32_t size = ValueBufferSize;
    std::uint32_t type = platform::RegNone;
    RaiseOnFailure(platform::RegQueryValueExA(hCurrentKey_, platform::AnsiFromText(name), type, buffer, size));
    switch (type) {
        case platform::RegSz:
        case platform::RegExpandSz:
            // The last byte is the terminator; a value stored without a terminator loses its last character.
            return BufferText(buffer, size == 0 ? 0 : size - 1);
        case platform::RegDword: return StoredNumber(buffer);
        default: return Null{};
    }
}

void Registry::Value(const Text& name, const Variant& value) {
    KeyAccess(platform::KeySetValue, false);
    if (const Text* const text = std::get_if<Text>(&value)) {
        Store(name, platform::RegSz, platform::AnsiFromText(*text));
    } else if (const std::optional<std::int32_t> number = IntegerValue(value)) {
        if (*number < 0) {
            Raise(RuntimeError::InvalidArgument);
        }
        Store(name, platform::RegDword, platform::BytesFromNumber(static_cast<std::uint32_t>(*number)));
    }
}

void Registry::Store(const Text& name, std::uint32_t type, const std::string& data) {
    RaiseOnFailure(platform::RegSetValueExA(hCurrentKey_, platform::AnsiFromText(name), type, data));
}
