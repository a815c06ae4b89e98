#include "settings/Registry.h"

#include <cstdint>
#include <string>
#include <utility>

#include "common/Conversion.h"
#include "common/Error.h"
#include "common/modStringLibrary.h"
#include "platform/Regional.h"

namespace {

constexpr std::size_t EnumerationBufferSize = 255;
constexpr std::size_t ValueBufferSize = 1024;

void RaisePending(platform::Status status) {
    Raise(status, LastError().Description());
}

void RaiseOnFailure(platform::Status status) {
    if (status != platform::StatusSuccess) {
        RaisePending(status);
    }
}

void RaiseAsErrorOnFailure(platform::Status status) {
    if (status != platform::StatusSuccess) {
        Raise(status, u"Error " + LastError().Description());
    }
}

Text BufferText(const std::string& buffer, std::int32_t length) {
    return MidFixed(platform::TextFromAnsi(buffer), 1, static_cast<std::int16_t>(length));
}

// A stored number has its lowest byte first. Each step is checked, so that the top bit overflows.
std::int32_t NumberFromBytes(const std::string& bytes) {
    std::int64_t number = 0;
    for (std::size_t place = 4; place-- > 0;) {
        number = number * 256 + static_cast<unsigned char>(bytes[place]);
    }
    if (number > INT32_MAX) {
        Raise(RuntimeError::Overflow);
    }
    return static_cast<std::int32_t>(number);
}

}  // namespace

void Registry::KeyReset() noexcept {
    accessMode_ = platform::KeyQueryValue;
    accessExpected_ = 0;
    root_ = 0;
    key_.clear();
    currentKey_ = 0;
    subKey_.clear();
    valueName_.clear();
}

void Registry::KeyClose() noexcept {
    platform::RegCloseKey(currentKey_);
    KeyReset();
}

void Registry::KeyOpenLocalMachine(const Text& path, bool force) {
    KeyOpen(platform::KeyLocalMachine, path, force);
}

void Registry::KeyOpenCurrentUser(const Text& path, bool force) {
    KeyOpen(platform::KeyCurrentUser, path, force);
}

void Registry::KeyOpenClassesRoot(const Text& path, bool force) {
    KeyOpen(platform::KeyClassesRoot, path, force);
}

void Registry::KeyOpenUsers(const Text& path, bool force) {
    KeyOpen(platform::KeyUsers, path, force);
}

void Registry::KeyOpen(platform::Handle root, const Text& path, bool force) {
    root_ = root;
    key_ = path;
    KeyAccess(0, force);
}

// Opens keys, alone with KeyOpenAhead and SubKeyEnter. `mask` holds the rights that the coming operation needs, 0 for
// an open that takes what AccessMode says.
void Registry::KeyAccess(std::int32_t mask, bool force) {
    if (currentKey_ != 0) {
        if ((accessMode_ & mask) == mask) {
            return;
        }
        platform::RegCloseKey(currentKey_);
        currentKey_ = 0;
        accessMode_ |= mask;
    }
    const std::string path = platform::AnsiFromText(key_);
    KeyOpenAhead(path);
    if (currentKey_ != 0) {
        return;
    }
    platform::Status status = platform::RegOpenKeyExA(root_, path, 0, accessMode_, currentKey_);
    if (currentKey_ == 0 && force) {
        CreateFromRoot();
        status = platform::RegOpenKeyExA(root_, path, 0, accessMode_, currentKey_);
    }
    if (currentKey_ == 0) {
        const Text refused = key_;
        KeyClose();
        Raise(status, u"Key not opened: " + refused);
    }
}

// Opens the key with the expected rights, if there are any and they are granted; a failure leaves nothing behind.
void Registry::KeyOpenAhead(const std::string& path) {
    if (accessExpected_ == 0) {
        return;
    }
    const std::int32_t mask = accessMode_ | std::exchange(accessExpected_, 0);
    if (platform::RegOpenKeyExA(root_, path, 0, mask, currentKey_) == platform::StatusSuccess) {
        accessMode_ = mask;
    }
}

// Creates the key of `key_` from the root. With the path held aside, widening the rights opens the root anew and not
// the key that is still missing. The root itself belongs to the caller, one that was opened anew to us.
void Registry::CreateFromRoot() {
    currentKey_ = root_;
    const Text path = key_;
    key_.clear();
    SubKeyCreate(path);
    key_ = path;
    if (currentKey_ != root_) {
        platform::RegCloseKey(currentKey_);
    }
    currentKey_ = 0;
}

// Whatever the status, the step has advanced; only a name that was delivered is not the end.
void Registry::EnumerationStep(platform::Status status, const std::string& buffer, std::uint32_t size,
                               std::int32_t& index, Text& name, bool& end) {
    ++index;
    end = status != platform::StatusSuccess;
    name = end ? Text() : BufferText(buffer, static_cast<std::int32_t>(size));
    if (end && status != platform::StatusNoMoreItems) {
        RaisePending(status);
    }
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
        platform::RegEnumKeyExA(currentKey_, subKeyIndex_, name, nameSize, className, classSize);
    EnumerationStep(status, name, nameSize, subKeyIndex_, subKey_, eofSubKey_);
}

void Registry::SubKeyCreate(const Text& path) {
    KeyAccess(platform::KeyCreateSubKey, false);
    platform::Handle created = 0;
    std::uint32_t disposition = 0;
    RaiseOnFailure(platform::RegCreateKeyExA(currentKey_, platform::AnsiFromText(path), "", 0,
                                             platform::KeyCreateSubKey, created, disposition));
    platform::RegCloseKey(created);
}

bool Registry::SubKeyEnter(const Text& path, std::int32_t mask) {
    KeyAccess(platform::KeyCreateSubKey, false);
    const Text entered = key_.empty() ? path : key_ + u"\\" + path;
    platform::Handle key = 0;
    mask |= accessMode_;
    if (platform::RegOpenKeyExA(root_, platform::AnsiFromText(entered), 0, mask, key) != platform::StatusSuccess) {
        return false;
    }
    platform::RegCloseKey(currentKey_);
    currentKey_ = key;
    accessMode_ = mask;
    key_ = entered;
    return true;
}

void Registry::SubKeyDelete(const Text& name) {
    KeyAccess(platform::KeyCreateSubKey, false);
    RaiseAsErrorOnFailure(platform::RegDeleteKeyA(currentKey_, platform::AnsiFromText(name)));
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
        platform::RegEnumValueA(currentKey_, valueNameIndex_, name, nameSize, type, data, dataSize);
    EnumerationStep(status, name, nameSize, valueNameIndex_, valueName_, eofValueName_);
}

void Registry::ValueNameDelete(const Text& name) {
    KeyAccess(platform::KeySetValue, false);
    RaiseAsErrorOnFailure(platform::RegDeleteValueA(currentKey_, platform::AnsiFromText(name)));
}

Variant Registry::Value(const Text& name) {
    KeyAccess(platform::KeyQueryValue, false);
    std::string buffer(ValueBufferSize, ' ');
    std::uint32_t size = ValueBufferSize;
    std::uint32_t type = platform::RegNone;
    RaiseOnFailure(platform::RegQueryValueExA(currentKey_, platform::AnsiFromText(name), type, buffer, size));
    switch (type) {
        case platform::RegSz:
        case platform::RegExpandSz:
            // The last byte is the terminator; a value stored without one loses its last character.
            return BufferText(buffer, static_cast<std::int32_t>(size) - 1);
        case platform::RegDword:
            return NumberFromBytes(buffer);
        default:
            return Null{};
    }
}

void Registry::Value(const Text& name, const Variant& value) {
    KeyAccess(platform::KeySetValue, false);
    if (const Text* const text = std::get_if<Text>(&value)) {
        Store(name, platform::RegSz, platform::AnsiFromText(*text));
    } else if (const std::optional<std::int32_t> number = WholeNumber(value)) {
        StoreNumber(name, *number);
    }
}

void Registry::StoreNumber(const Text& name, std::int32_t number) {
    if (number < 0) {
        Raise(RuntimeError::InvalidArgument);
    }
    std::string bytes;
    for (int place = 0; place < 4; ++place) {
        bytes += static_cast<char>(static_cast<unsigned char>(number % 256));
        number /= 256;
    }
    Store(name, platform::RegDword, bytes);
}

void Registry::Store(const Text& name, std::uint32_t type, const std::string& data) {
    RaiseOnFailure(platform::RegSetValueExA(currentKey_, platform::AnsiFromText(name), type, data));
}
