#include "platform/Regional.h"

#include "platform/windows/Win32.h"

namespace platform {

std::uint32_t GetACP() {
    return ::GetACP();
}

// If the system code page is UTF-8, it covers every character, and WideCharToMultiByte rejects a default character.
// UTF-8 also needs the largest buffer: three bytes per UTF-16 code unit.
std::string AnsiFromText(const std::u16string& text) {
    const bool isUtf8 = GetACP() == CodePageUtf8;
    std::string bytes(text.size() * 3, '\0');
    const int size = ::WideCharToMultiByte(CP_ACP, isUtf8 ? 0 : WC_NO_BEST_FIT_CHARS, windows::Wide(text),
                                           static_cast<int>(text.size()), bytes.data(), static_cast<int>(bytes.size()),
                                           isUtf8 ? nullptr : "?", nullptr);
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

// A character never takes more UTF-16 code units than bytes.
std::u16string TextFromAnsi(const std::string& bytes) {
    const int byteCount = static_cast<int>(bytes.size());
    std::u16string text(bytes.size(), u'\0');
    const int length = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), byteCount, windows::Wide(text), byteCount);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::u16string CharUpperW(const std::u16string& text) {
    std::u16string uppercase = text;
    ::CharUpperBuffW(windows::Wide(uppercase), static_cast<DWORD>(uppercase.size()));
    return uppercase;
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
