#include "platform/Regional.h"

#include "platform/windows/Win32.h"

namespace platform {

namespace {

// UTF-8 as the system's code page has every character, and the conversion takes no substitute then.
int AnsiConverted(const std::u16string& text, char* bytes, int size) {
    const bool hasAll = ::GetACP() == CP_UTF8;
    return ::WideCharToMultiByte(CP_ACP, hasAll ? 0 : WC_NO_BEST_FIT_CHARS, windows::Wide(text),
                                 static_cast<int>(text.size()), bytes, size, hasAll ? nullptr : "?", nullptr);
}

}  // namespace

std::string AnsiFromText(const std::u16string& text) {
    std::string bytes(static_cast<std::size_t>(AnsiConverted(text, nullptr, 0)), '\0');
    AnsiConverted(text, bytes.data(), static_cast<int>(bytes.size()));
    return bytes;
}

std::u16string TextFromAnsi(const std::string& bytes) {
    const int byteCount = static_cast<int>(bytes.size());
    const int length = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), byteCount, nullptr, 0);
    std::u16string text(static_cast<std::size_t>(length), u'\0');
    ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), byteCount, windows::Wide(text), length);
    return text;
}

std::u16string CharUpperW(const std::u16string& text) {
    std::u16string capitals = text;
    ::CharUpperBuffW(windows::Wide(capitals), static_cast<DWORD>(capitals.size()));
    return capitals;
}

Status VarI4FromStr(const std::u16string& text, std::int32_t& number) {
    LONG result = 0;
    std::u16string buffer = text;
    const Status status = ::VarI4FromStr(windows::Wide(buffer), LOCALE_USER_DEFAULT, 0, &result);
    if (status == StatusSuccess) {
        number = result;
        return StatusSuccess;
    }
    return status == DispOverflow ? DispOverflow : DispTypeMismatch;
}

std::u16string VarBstrFromDate(double date) {
    BSTR result = nullptr;
    if (::VarBstrFromDate(date, LOCALE_USER_DEFAULT, 0, &result) != S_OK) {
        return {};
    }
    const windows::Owned<BSTR, ::SysFreeString> owner(result);
    return {windows::Portable(result), ::SysStringLen(result)};
}

}  // namespace platform
