#include "platform/RegistryCalls.h"

#include "platform/windows/Win32.h"

namespace platform {

namespace {

HKEY KeyOf(Handle key) {
    return windows::SystemHandleOf<HKEY>(key);
}

BYTE* BytesOf(std::span<char> buffer) {
    return reinterpret_cast<BYTE*>(buffer.data());
}

}  // namespace

Status RegOpenKeyExA(Handle key, const std::string& subKey, std::uint32_t options, std::int32_t access,
                     Handle& opened) {
    HKEY result = nullptr;
    const Status status = ::RegOpenKeyExA(KeyOf(key), subKey.c_str(), options, static_cast<REGSAM>(access), &result);
    opened = status == StatusSuccess ? windows::HandleOf(result) : 0;
    return status;
}

Status RegCloseKey(Handle key) noexcept {
    return ::RegCloseKey(KeyOf(key));
}

Status RegCreateKeyExA(Handle key, const std::string& subKey, const std::string& className, std::uint32_t options,
                       std::int32_t access, Handle& created, std::uint32_t& disposition) {
    HKEY result = nullptr;
    DWORD outcome = 0;
    std::string classBuffer = className;
    const Status status = ::RegCreateKeyExA(KeyOf(key), subKey.c_str(), 0, classBuffer.data(), options,
                                            static_cast<REGSAM>(access), nullptr, &result, &outcome);
    if (status == StatusSuccess) {
        created = windows::HandleOf(result);
        disposition = outcome;
    }
    return status;
}

Status RegDeleteKeyA(Handle key, const std::string& subKey) {
    return ::RegDeleteKeyA(KeyOf(key), subKey.c_str());
}

Status RegDeleteValueA(Handle key, const std::string& name) {
    return ::RegDeleteValueA(KeyOf(key), name.c_str());
}

Status RegEnumKeyExA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize,
                     std::span<char> className, std::uint32_t& classSize) {
    DWORD newNameSize = nameSize;
    DWORD newClassSize = classSize;
    FILETIME lastWrite;
    const Status status = ::RegEnumKeyExA(KeyOf(key), static_cast<DWORD>(index), name.data(), &newNameSize, nullptr,
                                          className.data(), &newClassSize, &lastWrite);
    if (status == StatusSuccess) {
        nameSize = newNameSize;
        classSize = newClassSize;
    }
    return status;
}

Status RegEnumValueA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize, std::uint32_t& type,
                     std::span<char> data, std::uint32_t& dataSize) {
    DWORD newNameSize = nameSize;
    DWORD newDataSize = dataSize;
    DWORD newType = 0;
    const Status status = ::RegEnumValueA(KeyOf(key), static_cast<DWORD>(index), name.data(), &newNameSize, nullptr,
                                          &newType, BytesOf(data), &newDataSize);
    if (status == StatusSuccess) {
        nameSize = newNameSize;
        type = newType;
        dataSize = newDataSize;
    }
    return status;
}

Status RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::span<char> data,
                        std::uint32_t& dataSize) {
    DWORD newDataSize = dataSize;
    DWORD newType = 0;
    const Status status = ::RegQueryValueExA(KeyOf(key), name.c_str(), nullptr, &newType, BytesOf(data), &newDataSize);
    if (status == StatusSuccess) {
        type = newType;
    }
    if (status == StatusSuccess || status == StatusMoreData) {
        dataSize = newDataSize;
    }
    return status;
}

Status RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, std::string_view data) {
    const std::string bytes = StoredData(type, data);
    return ::RegSetValueExA(KeyOf(key), name.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                            static_cast<DWORD>(bytes.size()));
}

}  // namespace platform
