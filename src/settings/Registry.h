#pragma once

#include <cstdint>
#include <string>

#include "common/Text.h"
#include "common/Variant.h"
#include "platform/Handle.h"
#include "platform/RegistryCalls.h"

// The only class that accesses the registry. Holds at most one open key, below one of the roots. Opens the key with the
// right to query values, unless AccessMode was set before, and reopens it with wider rights when an operation needs
// them.
//
// Every failure is raised with the system's status as its number. Unless documented otherwise, the description is the
// pending one, which is the description in the error state at that moment.
//
// Callers open a key with one of the KeyOpen functions, use it, and call KeyClose, even after an error: the destructor
// doesn't close the key. While a key is open, KeyOpen doesn't open another one.
class Registry {
public:
    // True if the last SubKeyNext or ValueNameNext returned no name. An empty name doesn't mean the end: the unnamed
    // value has an empty name. KeyClose changes neither these flags nor the enumerations' indexes.
    [[nodiscard]] bool EOF_SubKey() const { return eofSubKey_; }
    void EOF_SubKey(bool end) { eofSubKey_ = end; }
    [[nodiscard]] bool EOF_ValueName() const { return eofValueName_; }
    void EOF_ValueName(bool end) { eofValueName_ = end; }

    // The rights to open the next key with, such as platform::KeyQueryValue. While a key is open, operations only add
    // rights.
    [[nodiscard]] std::int32_t AccessMode() const { return accessMode_; }
    void AccessMode(std::int32_t accessMode) { accessMode_ = accessMode; }

    [[nodiscard]] platform::Handle hKey() const { return hKey_; }
    [[nodiscard]] platform::Handle hCurrentKey() const { return hCurrentKey_; }
    [[nodiscard]] const Text& Key() const { return key_; }
    [[nodiscard]] const Text& SubKey() const { return subKey_; }
    [[nodiscard]] const Text& ValueName() const { return valueName_; }

    void KeyClose() noexcept;

    // Open the key `szKey` below a root; an empty `szKey` opens the root itself. If the key is missing and `force` is
    // true, create it and any missing parents; if that fails, raise SubKeyCreate's error. Any other failure closes and
    // resets the object and raises an error described as "Key not opened: " plus the path.
    void KeyOpenLocalMachine(const Text& szKey, bool force = false);
    void KeyOpenCurrentUser(const Text& szKey, bool force = false);
    void KeyOpenClassesRoot(const Text& szKey, bool force = false);
    void KeyOpenUsers(const Text& szKey, bool force = false);
    void KeyOpen(platform::Handle hKey, const Text& szKey, bool force = false);

    // Enumerate the subkeys: call SubKeyFirst; until EOF_SubKey is true, use SubKey and call SubKeyNext. A failed step
    // ends the enumeration, but a further SubKeyNext continues with the next subkey.
    void SubKeyFirst();
    void SubKeyNext();
    // Creates a key of one or several levels below the open key, which stays open.
    void SubKeyCreate(const Text& newSubKey);
    // Deletes a key without subkeys, and its values. Describes a failure as "Error " plus the pending description.
    void SubKeyDelete(const Text& key);

    // Enumerate the values in the same way. The step of a value with more than 255 bytes of data raises 234.
    void ValueNameFirst();
    void ValueNameNext();
    // Deletes a value. Describes a failure as SubKeyDelete does.
    void ValueNameDelete(const Text& name);

    // Returns the value's string or number, or Null for any other stored type. Raises 2 if the value is missing, 234 if
    // its data, including the terminator, exceeds 1024 bytes, 6 (overflow) if the stored number is 0x80000000 or more.
    [[nodiscard]] Variant Value(const Text& name);
    // Stores a string, or a whole number as 32 bits. Raises 5 (invalid argument) if the number is negative. Stores
    // nothing for any other kind of variant.
    void Value(const Text& name, const Variant& value);

private:
    void KeyReset() noexcept;
    void KeyAccess(std::int32_t accessMode, bool force);
    void CreateFromRoot();
    static void EnumerationStep(platform::Status status, const std::string& buffer, std::uint32_t size,
                                std::int32_t& index, Text& name, bool& end);
    void StoreNumber(const Text& name, std::int32_t number);
    void Store(const Text& name, std::uint32_t type, const std::string& data);

    bool eofSubKey_ = false;
    bool eofValueName_ = false;
    std::int32_t accessMode_ = platform::KeyQueryValue;
    platform::Handle hKey_ = 0;
    Text key_;
    platform::Handle hCurrentKey_ = 0;
    Text subKey_;
    Text valueName_;
    std::int32_t subKeyIndex_ = 0;
    std::int32_t valueNameIndex_ = 0;
};

// Closes the key of a Registry at the end of the scope.
class KeyCloser {
public:
    explicit KeyCloser(Registry& registry) : registry_(registry) {}
    ~KeyCloser() { registry_.KeyClose(); }
    KeyCloser(const KeyCloser&) = delete;
    KeyCloser& operator=(const KeyCloser&) = delete;

private:
    Registry& registry_;
};
