#include "platform/Process.h"

#include <memory>
#include <vector>

#include "platform/Regional.h"
#include "platform/windows/DateValue.h"
#include "platform/windows/SystemFolder.h"

namespace platform {

namespace {

std::u16string ProgramPath() {
    std::u16string path(MAX_PATH, u'\0');
    for (;;) {
        const DWORD length = ::GetModuleFileNameW(nullptr, windows::Wide(path), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
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

    // Returns a string in the resource's first language, or an empty string if it is missing.
    [[nodiscard]] std::u16string Text(const std::u16string& name) const {
        const auto* const language = Find<WORD>(u"\\VarFileInfo\\Translation");
        if (language == nullptr) {
            return {};
        }
        const auto* const text =
            Find<char16_t>(u"\\StringFileInfo\\" + HexDigits(language[0]) + HexDigits(language[1]) + u"\\" + name);
        return text == nullptr ? std::u16string() : std::u16string(text);
    }

private:
    static std::u16string HexDigits(WORD number) {
        std::u16string digits;
        for (int shift = 12; shift >= 0; shift -= 4) {
            digits += u"0123456789ABCDEF"[(number >> shift) & 0xF];
        }
        return digits;
    }

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
    const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> arguments(::CommandLineToArgvW(::GetCommandLineW(), &count),
                                                                      &::LocalFree);
    std::vector<std::u16string> texts;
    for (int number = 1; arguments != nullptr && number < count; ++number) {
        texts.emplace_back(reinterpret_cast<const char16_t*>(arguments.get()[number]));
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

// Loops because the variable may grow between the size query and the copy.
std::string GetEnvironmentVariableA(const std::string& name) {
    std::string value;
    for (;;) {
        const DWORD length = ::GetEnvironmentVariableA(name.c_str(), value.data(), static_cast<DWORD>(value.size()));
        if (length <= value.size()) {
            value.resize(length);
            return value;
        }
        value.resize(length);
    }
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
