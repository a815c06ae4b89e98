#pragma once

#include <cstdint>
#include <string>

#include "common/Text.h"
#include "common/Variant.h"
#include "platform/Handle.h"
#include "platform/RegistryCalls.h"

// The one way to the registry. An object stands on at most one open key, below one of the roots. It opens the key with
// the right to query values alone, unless AccessMode was set before, and opens it anew with wider rights the moment
// that an operation needs them.
//
// Every failure is raised with the status of the system's call as its number. Where no other description is told, it is
// the pending one: what the error state holds at that moment.
//
// A user opens with one of the KeyOpen family, works, and ends with KeyClose, also after an error: the object does not
// close its key when it goes. While a key is open another KeyOpen does not move the object.
class Registry {
public:
    // True when the last SubKeyNext or ValueNameNext delivered no name. A name alone does not tell the end: the unnamed
    // value has an empty one. The flags and the places of both enumerations survive KeyClose.
    [[nodiscard]] bool EOF_SubKey() const { return eofSubKey_; }
    void EOF_SubKey(bool end) { eofSubKey_ = end; }
    [[nodiscard]] bool EOF_ValueName() const { return eofValueName_; }
    void EOF_ValueName(bool end) { eofValueName_ = end; }

    // The rights that the next open asks for (platform::KeyQueryValue and the like); they only grow while a key is
    // open.
    [[nodiscard]] std::int32_t AccessMode() const { return accessMode_; }
    void AccessMode(std::int32_t accessMode) { accessMode_ = accessMode; }

    [[nodiscard]] platform::Handle hKey() const { return hKey_; }
    [[nodiscard]] platform::Handle hCurrentKey() const { return hCurrentKey_; }
    [[nodiscard]] const Text& Key() const { return key_; }
    [[nodiscard]] const Text& SubKey() const { return subKey_; }
    [[nodiscard]] const Text& ValueName() const { return valueName_; }

    void KeyClose() noexcept;

    // Open the key `szKey` below a root, the empty text for the root itself. With `force` a missing key is created with
    // all its levels; when that is refused, SubKeyCreate's error is raised. Any other failure closes and resets the
    // object and is described "Key not opened: " and the path.
    void KeyOpenLocalMachine(const Text& szKey, bool force = false);
    void KeyOpenCurrentUser(const Text& szKey, bool force = false);
    void KeyOpenClassesRoot(const Text& szKey, bool force = false);
    void KeyOpenUsers(const Text& szKey, bool force = false);
    void KeyOpen(platform::Handle hKey, const Text& szKey, bool force = false);

    // The subkeys one by one: SubKeyFirst; until EOF_SubKey, use SubKey and call SubKeyNext. A failed step ends the
    // enumeration and has advanced all the same.
    void SubKeyFirst();
    void SubKeyNext();
    // Creates a key of one or several levels below the open one, on which the object stays.
    void SubKeyCreate(const Text& newSubKey);
    // Deletes a key that has no subkeys, with its values. A failure is described "Error " and the pending description.
    void SubKeyDelete(const Text& key);

    // The values in the same way. A value with more than 255 bytes of data fails its step (234).
    void ValueNameFirst();
    void ValueNameNext();
    // Deletes a value; described as SubKeyDelete.
    void ValueNameDelete(const Text& name);

    // A value's text or number; null for every other stored type. 2 for a missing value, 234 for one of more than 1024
    // bytes with its terminator, the overflow error (6) for a stored number of 0x80000000 and above.
    [[nodiscard]] Variant Value(const Text& name);
    // Stores a text, or a number from 0 upward as 32 bits; a negative one is an invalid argument (5). Any other kind
    // stores nothing.
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

// Closes the key of a Registry at the end of a scope, so that no error leaves it open.
class KeyCloser {
public:
    explicit KeyCloser(Registry& registry) : registry_(registry) {}
    ~KeyCloser() { registry_.KeyClose(); }
    KeyCloser(const KeyCloser&) = delete;
    KeyCloser& operator=(const KeyCloser&) = delete;

private:
    Registry& registry_;
};
