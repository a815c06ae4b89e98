#include <winternl.h>

#include <array>
#include <memory>

#include "Desktop.h"

// Wine does not count a process' objects for those who ask, but it shows the tables that they stand in.

namespace {

constexpr int AllHandles = 16;  // SystemHandleInformation

struct HandleEntry {
    ULONG process;
    BYTE type;
    BYTE flags;
    USHORT handle;
    void* object;
    ULONG access;
};

struct DrawingEntry {
    ULONGLONG object;
    ULONG owner;
    USHORT unique;
    BYTE type;
    BYTE flags;
    ULONGLONG user;
};
using DrawingTable = std::array<DrawingEntry, 16384>;

template <typename Function>
Function NativeFunction(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), name)));
}

std::size_t Handles(DWORD process) {
    static const auto query = NativeFunction<decltype(&::NtQuerySystemInformation)>("NtQuerySystemInformation");
    std::vector<char> table(1 << 20);
    ULONG size = 0;
    if (query(static_cast<SYSTEM_INFORMATION_CLASS>(AllHandles), table.data(), static_cast<ULONG>(table.size()),
              &size) != 0) {
        return 0;
    }
    const ULONG number = *reinterpret_cast<const ULONG*>(table.data());
    const auto* const entries = reinterpret_cast<const HandleEntry*>(table.data() + sizeof(void*));
    std::size_t handles = 0;
    for (ULONG entry = 0; entry < number; ++entry) {
        handles += entries[entry].process == process ? 1 : 0;
    }
    return handles;
}

std::size_t DrawingObjects(HANDLE process) {
    static const auto query = NativeFunction<decltype(&::NtQueryInformationProcess)>("NtQueryInformationProcess");
    constexpr std::size_t tableAddress = sizeof(void*) == 8 ? 0xF8 : 0x94;  // GdiSharedHandleTable
    PROCESS_BASIC_INFORMATION basic{};
    const char* address = nullptr;
    const auto table = std::make_unique<DrawingTable>();
    if (query(process, ProcessBasicInformation, &basic, sizeof basic, nullptr) != 0 ||
        !::ReadProcessMemory(process, reinterpret_cast<const char*>(basic.PebBaseAddress) + tableAddress, &address,
                             sizeof address, nullptr) ||
        !::ReadProcessMemory(process, address, table->data(), sizeof(DrawingTable), nullptr)) {
        return 0;
    }
    std::size_t objects = 0;
    for (const DrawingEntry& entry : *table) {
        objects += entry.type != 0 ? 1 : 0;
    }
    return objects;
}

struct WindowCount {
    DWORD process;
    std::size_t windows;
};

BOOL CALLBACK WindowCounted(HWND window, LPARAM parameter) {
    WindowCount& count = *reinterpret_cast<WindowCount*>(parameter);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process == count.process) {
        ++count.windows;
        if (::GetAncestor(window, GA_PARENT) == ::GetDesktopWindow()) {
            ::EnumChildWindows(window, WindowCounted, parameter);
        }
    }
    return TRUE;
}

std::size_t WindowsOf(DWORD process) {
    WindowCount count{process, 0};
    ::EnumWindows(WindowCounted, reinterpret_cast<LPARAM>(&count));
    return count.windows;
}

}  // namespace

HeldObjects Program::Objects() const {
    const DWORD drawing = ::GetGuiResources(process_, GR_GDIOBJECTS);
    const DWORD user = ::GetGuiResources(process_, GR_USEROBJECTS);
    return {Handles(id_), drawing != 0 ? drawing : DrawingObjects(process_), user != 0 ? user : WindowsOf(id_)};
}
