#pragma once

#include <doctest/doctest.h>

#include <string>

// How a failed check shows wide text.
namespace doctest {
template <>
struct StringMaker<std::wstring> {
    static String convert(const std::wstring& text) {
        std::string shown;
        for (const wchar_t character : text) {
            shown += character < 0x80 ? static_cast<char>(character) : '?';
        }
        return shown.c_str();
    }
};
}  // namespace doctest
