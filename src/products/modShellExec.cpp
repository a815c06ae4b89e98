#include "products/modShellExec.h"

#include "common/Error.h"
#include "common/OwnedHandle.h"
#include "common/modStringLibrary.h"
#include "platform/Regional.h"
#include "platform/ShellCalls.h"
#include "platform/WindowSystem.h"

namespace {

constexpr std::int32_t FirstSuccess = 33;
constexpr std::int32_t InheritHandle = -1;  // true, with all bits set

// Raises 53 (file not found) if the program is missing, 5 (invalid argument) for any other failure.
void RaiseStartStatus(platform::Status status) {
    if (status == platform::StatusFileNotFound || status == platform::StatusPathNotFound) {
        Raise(RuntimeError::FileNotFound);
    } else if (status != platform::StatusSuccess) {
        Raise(RuntimeError::InvalidArgument);
    }
}

}  // namespace

void ShellOpen(Text& path) {
    const std::int32_t code = ShellOpenDocument(path);
    if (code < FirstSuccess) {
        Raise(code, ShellErrorText(code));
    }
}

std::int32_t ShellOpenDocument(Text& path) {
    const Text directory = PathDirectory(path);
    return platform::ShellExecuteA(platform::GetDesktopWindow(), "open", platform::AnsiFromText(QuoteText(path)), "",
                                   platform::AnsiFromText(directory), platform::ShowNormal);
}

std::uint32_t ShellAndWait(const Text& command, std::optional<std::uint32_t> timeOut) {
    std::int32_t processId = 0;
    RaiseStartStatus(
        platform::StartCommandLine(platform::AnsiFromText(command), platform::ShowMinimisedFocus, processId));
    const OwnedHandle process(platform::OpenProcess(platform::Synchronize, InheritHandle, processId));
    return platform::WaitForSingleObject(process.Get(), timeOut.value_or(platform::WaitInfinite));
}

Text ShellErrorText(std::int32_t code) {
    if (code >= FirstSuccess) {
        return {};
    }
    switch (code) {
        case 2: return u"File not found";
        case 3: return u"Path not found";
        case 5: return u"Access denied";
        case 8: return u"Out of memory";
        case 11: return u"Invalid EXE file or error in EXE image";
        case 26: return u"A sharing violation occurred";
        case 27: return u"Incomplete or invalid file association";
        case 28: return u"DDE Time out";
        case 29: return u"DDE transaction failed";
        case 30: return u"DDE busy";
        case 31: return u"No association for file extension";
        case 32: return u"DLL not found";
        default: return u"Unknown error";
    }
}
