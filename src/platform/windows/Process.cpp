#include "platform/Process.h"

#include <vector>

#include "platform/Regional.h"
#include "platform/windows/SystemFolder.h"

namespace platform {

namespace {

constexpr DWORD LongestPath = 32768;          // in characters, including the terminator
constexpr DWORD LongestVariable = 3 * 32767;  // in bytes; in UTF-8, a UTF-16 unit takes up to three

std::u16string ProgramPath() {
    std::u16string path(LongestPath, u'\0');
    path.resize(::GetModuleFileNameW(nullptr, windows::Wide(path), LongestPath));
    return path;
}

class VersionResource {
public:
    explicit VersionResource(const std::u16string& path) {
        const wchar_t* const file = windows::Wide(path);
        const DWORD size =
            windows::VersionCall<decltype(::GetFileVersionInfoSizeW)>("GetFileVersionInfoSizeW", file, nullptr);
        block_.resize(size);
        if (size == 0 || !windows::VersionCall<decltype(::GetFileVersionInfoW)>("GetFileVersionInfoW", file, 0, size,
                                                                                block_.data())) {
            block_.clear();
        }
    }

    template <typename Content>
    [[nodiscard]] const Content* Find(const std::u16string& subBlock) const {
        void* content = nullptr;
        UINT size = 0;
        const bool found =
            !block_.empty() && windows::VersionCall<decltype(::VerQueryValueW)>(
                                   "VerQueryValueW", block_.data(), windows::Wide(subBlock), &content, &size);
        return found && size != 0 ? static_cast<const Content*>(content) : nullptr;
    }

    // Returns a string in the language of version.rc, or an empty string if it is missing.
    [[nodiscard]] std::u16string Text(const std::u16string& name) const {
        const auto* const text = Find<char16_t>(u"\\StringFileInfo\\040704B0\\" + name);
        return text == nullptr ? std::u16string() : std::u16string(text);
    }

private:
    std::vector<std::byte> block_;
};

}  // namespace

// Ignores the arguments, since Windows provides the command line itself. Turns off the system's error dialogs, such as
// the one for an empty drive, so that the failing call returns an error instead.
void ProcessStart(int /*argumentCount*/, char** /*arguments*/) {
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    windows::ProtectLibrarySearch();
}

// The program name ends at the first space or tab outside double quotes.
std::u16string CommandLineTail() {
    const std::u16string line = windows::Portable(::GetCommandLineW());
    bool quoted = false;
    std::size_t end = 0;
    while (end < line.size() && (quoted || (line[end] != u' ' && line[end] != u'\t'))) {
        quoted = quoted != (line[end] == u'"');
        ++end;
    }
    return line.substr(end);
}

std::vector<std::u16string> CommandLineArguments() {
    int count = 0;
    const windows::Owned<wchar_t**, ::LocalFree> arguments(::CommandLineToArgvW(::GetCommandLineW(), &count));
    std::vector<std::u16string> texts;
    for (int number = 1; arguments != nullptr && number < count; ++number) {
        texts.emplace_back(windows::Portable(arguments.get()[number]));
    }
    return texts;
}

void WriteConsoleW(std::int32_t stream, const std::u16string& text) {
    const HANDLE output = ::GetStdHandle(static_cast<DWORD>(stream));
    DWORD written = 0;
    if (!::WriteConsoleW(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr)) {
        const std::string bytes = AnsiFromText(text);
        ::WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    }
}

std::string GetEnvironmentVariableA(const std::string& name) {
    std::string value(LongestVariable, '\0');
    value.resize(::GetEnvironmentVariableA(name.c_str(), value.data(), LongestVariable));
    return value;
}

double Now() {
    SYSTEMTIME time;
    ::GetLocalTime(&time);
    return windows::DateValueOf(time);
}

ProgramVersion ProgramVersionGet() {
    const VersionResource resource(ProgramPath());
    ProgramVersion version{resource.Text(u"FileDescription"), resource.Text(u"LegalCopyright"), 0, 0, 0};
    if (const auto* const numbers = resource.Find<VS_FIXEDFILEINFO>(u"\\")) {
        version.major = HIWORD(numbers->dwFileVersionMS);
        version.minor = LOWORD(numbers->dwFileVersionMS);
        version.revision = HIWORD(numbers->dwFileVersionLS);
    }
    return version;
}

std::string ProgramFolder() {
    const std::u16string path = ProgramPath();
    const std::size_t separator = path.rfind(u'\\');
    const bool isDriveRoot = separator == 2 && path[1] == u':';
    return AnsiFromText(path.substr(0, isDriveRoot ? separator + 1 : separator));
}

}  // namespace platform
