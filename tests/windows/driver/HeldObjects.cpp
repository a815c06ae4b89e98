#include "Desktop.h"

// clang-format off
#include <winternl.h>
// clang-format on

namespace {

struct DrawingEntry {
    ULONGLONG object;
    ULONG owner;
    USHORT unique;
    BYTE type;
    BYTE flags;
    ULONGLONG user;
};

std::size_t Handles(DWORD process) {
    constexpr auto allHandles = static_cast<SYSTEM_INFORMATION_CLASS>(16);  // SystemHandleInformation
    std::vector<char> buffer(1 << 20);
    ::NtQuerySystemInformation(allHandles, buffer.data(), static_cast<ULONG>(buffer.size()), nullptr);
    const auto& table = *reinterpret_cast<const SYSTEM_HANDLE_INFORMATION*>(buffer.data());
    std::size_t handles = 0;
    for (ULONG entry = 0; entry < table.Count; ++entry) {
        handles += table.Handle[entry].OwnerPid == process ? 1 : 0;
    }
    return handles;
}

std::size_t DrawingObjects(HANDLE process) {
    constexpr std::size_t tableAddress = sizeof(void*) == 8 ? 0xF8 : 0x94;  // GdiSharedHandleTable
    PROCESS_BASIC_INFORMATION basic{};
    const char* address = nullptr;
    std::vector<DrawingEntry> table(16384);
    ::NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr);
    ::ReadProcessMemory(process, reinterpret_cast<const char*>(basic.PebBaseAddress) + tableAddress, &address,
                        sizeof address, nullptr);
    ::ReadProcessMemory(process, address, table.data(), table.size() * sizeof(DrawingEntry), nullptr);
    return std::erase_if(table, [](const DrawingEntry& entry) { return entry.type != 0; });
}

}  // namespace

// Wine does not count a process' objects for those who ask, but it shows the tables that they stand in.
HeldObjects Program::Objects() const {
    std::size_t windows = 0;
    for (const HWND window : TopWindows()) {
        windows += 1 + Children(window).size();
    }
    return {Handles(process_.dwProcessId), DrawingObjects(process_.hProcess), windows};
}
