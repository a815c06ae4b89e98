#include "platform/ComponentCalls.h"

#include <filesystem>
#include <system_error>

#include "platform/Regional.h"
#include "platform/windows/Apartment.h"
#include "platform/windows/Win32.h"

namespace platform {

namespace {

using TextFunction = std::int32_t(__stdcall*)(const char* text);

}  // namespace

Status CreateObject(const std::u16string& progId, ObjectReference& object) {
    windows::EnterApartment();
    void* created = nullptr;
    CLSID clsid;
    Status status = ::CLSIDFromProgID(windows::Wide(progId), &clsid);
    if (SUCCEEDED(status)) {
        status = ::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IUnknown, &created);
    }
    object = SUCCEEDED(status) ? reinterpret_cast<ObjectReference>(created) : 0;
    return SUCCEEDED(status) ? StatusSuccess : status;
}

void ReleaseObject(ObjectReference object) noexcept {
    if (object != 0) {
        reinterpret_cast<IUnknown*>(object)->Release();
    }
}

Status CallTextFunction(const std::string& libraryPath, const std::string& function, const std::string& text,
                        std::int32_t& result) {
    // LOAD_WITH_ALTERED_SEARCH_PATH, which requires a full path, searches the library's own folder for its
    // dependencies. The library is never unloaded because it may have left a thread, hook or timer running.
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(TextFromAnsi(libraryPath), error);
    const HMODULE library = ::LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    const FARPROC found = library == nullptr ? nullptr : ::GetProcAddress(library, function.c_str());
    if (found == nullptr) {
        return windows::LastStatus();
    }
    result = reinterpret_cast<TextFunction>(reinterpret_cast<void*>(found))(text.c_str());
    return StatusSuccess;
}

std::u16string StatusText(Status status) {
    wchar_t* buffer = nullptr;
    DWORD length =
        ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                         nullptr, static_cast<DWORD>(status), 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    const windows::Owned<wchar_t*, ::LocalFree> owner(buffer);
    while (length > 0 && buffer[length - 1] <= L' ') {
        --length;
    }
    return {windows::Portable(buffer), length};
}

}  // namespace platform
