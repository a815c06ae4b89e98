#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/Handle.h"

// The registry. Names and text data are bytes in the system's 8-bit code page. Key and value names are found without
// regard to case and kept as first spelled. A path's levels are parted by "\". Every call returns the system's status;
// an output argument is set only on StatusSuccess unless its comment says otherwise.
namespace platform {

// Predefined root handles, as the system's headers number them. They need no open and ignore a close.
inline constexpr Handle KeyClassesRoot = static_cast<Handle>(0x80000000U);
inline constexpr Handle KeyCurrentUser = static_cast<Handle>(0x80000001U);
inline constexpr Handle KeyLocalMachine = static_cast<Handle>(0x80000002U);
inline constexpr Handle KeyUsers = static_cast<Handle>(0x80000003U);

// Rights of an open key; a handle has those it was opened with and no others.
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

// Opens `subKey` below `key` with the rights of `access`; an empty `subKey` opens `key` itself. `opened` is 0 on any
// failure: 2 for a missing key, 5 for a refused right, 6 for a `key` that is no handle.
Status RegOpenKeyExA(Handle key, const std::string& subKey, std::uint32_t options, std::int32_t access, Handle& opened);

// Closes an open key; 6 for a number that is no handle.
Status RegCloseKey(Handle key) noexcept;

// Opens `subKey` below `key` with the rights of `access` and creates every level that is missing. `disposition` is 1
// when the key was created and 2 when it was there.
Status RegCreateKeyExA(Handle key, const std::string& subKey, const std::string& className, std::uint32_t options,
                       std::int32_t access, Handle& created, std::uint32_t& disposition);

// Deletes the key `subKey` with its values: 2 when it is missing, 5 when it has subkeys or the right is refused.
Status RegDeleteKeyA(Handle key, const std::string& subKey);

// Deletes the value `name`, the empty text for the unnamed one: 2 when it is missing.
Status RegDeleteValueA(Handle key, const std::string& name);

// The name of the subkey with the number `index`, from 0. `nameSize` is the buffer's size on the way in, and the name's
// length without its terminator on the way out. 259 behind the last subkey, 234 when name and terminator do not fit.
Status RegEnumKeyExA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize,
                     std::span<char> className, std::uint32_t& classSize);

// The same for the value with the number `index`, with its type and data. `dataSize` counts bytes, on the way in and
// out.
Status RegEnumValueA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize, std::uint32_t& type,
                     std::span<char> data, std::uint32_t& dataSize);

// Type and data of the value `name`. `dataSize` is the buffer's size on the way in and the number of bytes stored on
// the way out, for a text its terminator included; it is set on 234 too. 2 for a missing value.
Status RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::span<char> data,
                        std::uint32_t& dataSize);

// Stores a value. A text (RegSz, RegExpandSz) handed over without its terminator is stored with one; a text
// of no bytes at all is stored as such.
Status RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, std::string_view data);

}  // namespace platform
