#include "platform/RegistryCalls.h"

#include <algorithm>

#include "platform/windows/Win32.h"

namespace platform {

namespace {

HKEY KeyOf(Handle key) {
    return windows::SystemHandleOf<HKEY>(key);
}

// Passes a caller's buffer to a registry call. Even an empty buffer gets a non-null address: with a null pointer, the
// call would succeed and only return the required size.
class Buffer {
public:
    Buffer(std::span<char> bytes, std::uint32_t size)
        : bytes_(bytes.empty() ? &dummy_ : bytes.data()),
          size_(static_cast<DWORD>(std::min<std::size_t>(bytes.size(), size))) {}
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;

    [[nodiscard]] char* Text() { return bytes_; }
    [[nodiscard]] BYTE* Bytes() { return reinterpret_cast<BYTE*>(bytes_); }
    [[nodiscard]] DWORD& Size() { return size_; }

private:
    char dummy_ = 0;
    char* bytes_;
    DWORD size_;
};

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
    Buffer nameBuffer(name, nameSize);
    Buffer classBuffer(className, classSize);
    FILETIME lastWrite;
    const Status status = ::RegEnumKeyExA(KeyOf(key), static_cast<DWORD>(index), nameBuffer.Text(), &nameBuffer.Size(),
                                          nullptr, classBuffer.Text(), &classBuffer.Size(), &lastWrite);
    if (status == StatusSuccess) {
        nameSize = nameBuffer.Size();
        classSize = classBuffer.Size();
    }
    return status;
}

Status RegEnumValueA(Handle key, std::int32_t index, std::span<char> name, std::uint32_t& nameSize, std::uint32_t& type,
                     std::span<char> data, std::uint32_t& dataSize) {
    Buffer nameBuffer(name, nameSize);
    Buffer dataBuffer(data, dataSize);
    DWORD dataType = 0;
    const Status status = ::RegEnumValueA(KeyOf(key), static_cast<DWORD>(index), nameBuffer.Text(), &nameBuffer.Size(),
                                          nullptr, &dataType, dataBuffer.Bytes(), &dataBuffer.Size());
    if (status == StatusSuccess) {
        nameSize = nameBuffer.Size();
        type = dataType;
        dataSize = dataBuffer.Size();
    }
    return status;
}

Status RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::span<char> data,
                        std::uint32_t& dataSize) {
    Buffer dataBuffer(data, dataSize);
    DWORD dataType = 0;
    const Status status =
        ::RegQueryValueExA(KeyOf(key), name.c_str(), nullptr, &dataType, dataBuffer.Bytes(), &dataBuffer.Size());
    if (status == StatusSuccess) {
        type = dataType;
    }
    if (status == StatusSuccess || status == StatusMoreData) {
        dataSize = dataBuffer.Size();
    }
    return status;
}

Status RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, std::string_view data) {
    const std::string bytes = StoredData(type, data);
    return ::RegSetValueExA(KeyOf(key), name.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                            static_cast<DWORD>(bytes.size()));
}

}  // namespace platform
