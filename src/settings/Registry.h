#pragma once

#include <cstdint>
#include <string>

#include "common/Text.h"
#include "common/Variant.h"
#include "platform/Handle.h"
#include "platform/RegistryCalls.h"

// The only class that accesses the registry. Holds at most one open key, below one of the roots. Opens the key with the
// right to query values, unless AccessMode was set first, and reopens it with more rights when an operation needs them.
//
// Every failure raises an error whose number is the system's status. Unless documented otherwise, its description is
// the pending one: the description already in the error state.
//
// Callers open a key with one of the KeyOpen functions, use it, and call KeyClose, even after an error: the destructor
// doesn't close the key. While a key is open, KeyOpen doesn't open another one.
class Registry {
public:
    // True if the last SubKeyNext or ValueNameNext returned no name. An empty name doesn't mark the end: the unnamed
    // value has an empty name. KeyClose changes neither these flags nor the enumerations' indexes.
    [[nodiscard]] bool EOF_SubKey() const { return eofSubKey_; }
    void EOF_SubKey(bool end) { eofSubKey_ = end; }
    [[nodiscard]] bool EOF_ValueName() const { return eofValueName_; }
    void EOF_ValueName(bool end) { eofValueName_ = end; }

    // The access rights to request when the next key is opened, such as platform::KeyQueryValue. While a key is open,
    // operations only add rights.
    [[nodiscard]] std::int32_t AccessMode() const { return accessMode_; }
    void AccessMode(std::int32_t accessMode) { accessMode_ = accessMode; }

    [[nodiscard]] platform::Handle hKey() const { return hKey_; }
    [[nodiscard]] platform::Handle hCurrentKey() const { return hCurrentKey_; }
    [[nodiscard]] const Text& Key() const { return key_; }
    [[nodiscard]] const Text& SubKey() const { return subKey_; }
    [[nodiscard]] const Text& ValueName() const { return valueName_; }

    void KeyClose() noexcept;

    // Opens the key `szKey` below a root; an empty `szKey` opens the root itself. If the key is missing and `force` is
    // true, creates it and any missing parents, raising SubKeyCreate's error if that fails. On any other failure,
    // closes and resets the object and raises an error with the description "Key not opened: " followed by the path.
    void KeyOpenLocalMachine(const Text& szKey, bool force = false) {
        KeyOpen(platform::KeyLocalMachine, szKey, force);
    }
    void KeyOpenCurrentUser(const Text& szKey, bool force = false) { KeyOpen(platform::KeyCurrentUser, szKey, force); }
    void KeyOpenClassesRoot(const Text& szKey, bool force = false) { KeyOpen(platform::KeyClassesRoot, szKey, force); }
    void KeyOpenUsers(const Text& szKey, bool force = false) { KeyOpen(platform::KeyUsers, szKey, force); }
    void KeyOpen(platform::Handle hKey, const Text& szKey, bool force = false);

    // To enumerate the subkeys, call SubKeyFirst; then, until EOF_SubKey is true, use SubKey and call SubKeyNext. A
    // failed step ends the loop, but calling SubKeyNext again resumes with the next subkey.
    void SubKeyFirst();
    void SubKeyNext();
    // Creates a key and any missing parents below the open key, which stays open.
    void SubKeyCreate(const Text& newSubKey);
    // Deletes a key that has no subkeys, along with its values. Describes a failure as "Error " plus the pending
    // description.
    void SubKeyDelete(const Text& key);

    // Like the SubKey functions above, but for values. A step raises 234 if the value has more than 255 bytes of data.
    void ValueNameFirst();
    void ValueNameNext();
    // Deletes a value. Describes failures in the same way as SubKeyDelete.
    void ValueNameDelete(const Text& name);

    // Returns the value's string or number, or Null for any other stored type. Raises 2 if the value is missing, 234 if
    // its data, including the terminator, exceeds 1024 bytes, 6 (overflow) if the stored number is 0x80000000 or more.
    [[nodiscard]] Variant Value(const Text& name);
    // Stores a string, or an integer as a 32-bit value. Raises 5 (invalid argument) if the integer is negative. Stores
    // nothing for any other variant type.
    void Value(const Text& name, const Variant& value);

private:
    void KeyReset() noexcept;
    void KeyAccess(std::int32_t accessMode, bool force);
    void CreateFromRoot();
    static void EnumerationStep(platform::Status status, const std::string& buffer, std::uint32_t size,
                                std::int32_t& index, Text& name, bool& end);
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
