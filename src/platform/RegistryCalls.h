#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/Handle.h"

// The registry. Names and string data are bytes in the system's 8-bit code page. Key and value names are
// case-insensitive and keep their first spelling. The levels of a path are separated by "\". Every call returns the
// system's status; an output argument is set only on StatusSuccess unless its comment says otherwise.
namespace platform {

// Predefined root handles, numbered as in the Windows headers. They are always open, and closing one has no effect.
inline constexpr Handle KeyClassesRoot = static_cast<Handle>(0x80000000U);
inline constexpr Handle KeyCurrentUser = static_cast<Handle>(0x80000001U);
inline constexpr Handle KeyLocalMachine = static_cast<Handle>(0x80000002U);
inline constexpr Handle KeyUsers = static_cast<Handle>(0x80000003U);

// Access rights of an open key. A handle has exactly the rights it was opened with.
inline constexpr std::int32_t KeyQueryValue = 1;
inline constexpr std::int32_t KeySetValue = 2;
inline constexpr std::int32_t KeyCreateSubKey = 4;
inline constexpr std::int32_t KeyEnumerateSubKeys = 8;

// Types of a stored value.
inline constexpr std::uint32_t RegNone = 0;
inline constexpr std::uint32_t RegSz = 1;
inline constexpr std::uint32_t RegExpandSz = 2;
inline constexpr std::uint32_t RegBinary = 3;
inline constexpr std::uint32_t RegDword = 4;

// Opens `subKey` below `key` with the rights in `access`. If `subKey` is empty, opens `key` itself. On failure sets
// `opened` to 0 and returns 2 if the key is missing, 5 if access is denied, 6 if `key` isn't a valid handle.
Status RegOpenKeyExA(Handle key, const std::string& subKey, std::uint32_t options, std::int32_t access, Handle& opened);

// Closes an open key. Returns 6 if `key` isn't a valid handle.
Status RegCloseKey(Handle key) noexcept;

// Opens `subKey` below `key` with the rights in `access` after creating all missing levels. Sets `disposition` to 1 if
// the key was created, to 2 if it existed.
Status RegCreateKeyExA(Handle key, const std::string& subKey, const std::string& className, std::uint32_t options,
                       std::int32_t access, Handle& created, std::uint32_t& disposition);

// Deletes the key `subKey` and its values. Returns 2 if the key is missing, 5 if it has subkeys or access is denied.
Status RegDeleteKeyA(Handle key, const std::string& subKey);

// Deletes the value `name`; an empty name is the unnamed value. Returns 2 if the value is missing.
Status RegDeleteValueA(Handle key, const std::string& name);

// Copies the name of the subkey at `index` (from 0) to `name`. `nameSize` is the size of `name` on input and the length
// of the name, without its terminator, on output. Returns 259 if `index` is past the last subkey, 234 if the buffer is
// too small for the name and its terminator.
Status RegEnumKeyExA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize,
                     std::span<char> className, std::uint32_t& classSize);

// Like RegEnumKeyExA, but for the value at `index`; also returns its type and data (see RegQueryValueExA).
Status RegEnumValueA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize, std::uint32_t& type,
                     std::span<char> data, std::uint32_t& dataSize);

// Returns the type and data of the value `name`. `dataSize` is the size of `data` on input and the number of stored
// bytes, including a string's terminator, on output; it is also set if the call returns 234 (the buffer is too small).
// Returns 2 if the value is missing.
Status RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::span<char> data,
                        std::uint32_t& dataSize);

// Stores a value in the form that StoredData returns.
Status RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, std::string_view data);

// Returns the bytes to store for a value. If a string (RegSz, RegExpandSz) lacks its terminator, appends it, unless the
// string has no bytes at all.
inline std::string StoredData(std::uint32_t type, std::string_view data) {
    const bool isText = type == RegSz || type == RegExpandSz;
    std::string bytes(data);
    if (isText && !bytes.empty() && bytes.back() != '\0') {
        bytes += '\0';
    }
    return bytes;
}

}  // namespace platform
