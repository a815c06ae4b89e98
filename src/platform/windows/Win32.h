#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifdef _WIN32_WINNT
#undef _WIN32_WINNT
#endif
#define _WIN32_WINNT 0x0601  // Windows 7

// clang-format off
#include <windows.h>
// clang-format on

#include <commctrl.h>
#include <objbase.h>
#include <oleauto.h>
#include <shellapi.h>

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>

#include "platform/Handle.h"

// Includes the Windows headers and converts between their types and the portable ones. In `src`, only code in this
// folder may include this file.
namespace platform::windows {

// Even on 64-bit Windows, system handles have only 32 significant bits. The conversion sign-extends, which the
// predefined registry roots require.
template <typename SystemHandle>
SystemHandle SystemHandleOf(Handle handle) {
    return reinterpret_cast<SystemHandle>(static_cast<std::intptr_t>(handle));
}

template <typename SystemHandle>
Handle HandleOf(SystemHandle handle) {
    return static_cast<Handle>(reinterpret_cast<std::intptr_t>(handle));
}

inline Status LastStatus() {
    return static_cast<Status>(::GetLastError());
}

// Returns the status of a call that reports success as a BOOL. Call it before any other system call.
inline Status StatusOf(BOOL succeeded) {
    return succeeded ? StatusSuccess : LastStatus();
}

static_assert(sizeof(wchar_t) == sizeof(char16_t));

inline const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

inline wchar_t* Wide(std::u16string& text) {
    return reinterpret_cast<wchar_t*>(text.data());
}

inline const char16_t* Portable(const wchar_t* text) {
    return reinterpret_cast<const char16_t*>(text);
}

// Converts a time to a date value: days since 30 December 1899, with the time of day, in whole seconds, as the
// fraction.
inline double DateValueOf(SYSTEMTIME time) {
    double date = 0;
    ::SystemTimeToVariantTime(&time, &date);
    return date;
}

template <auto Release>
struct Releaser {
    template <typename Object>
    void operator()(Object* object) const noexcept {
        Release(object);
    }
};

// Owns a system object of type `Pointer` and passes it to `Release` on destruction.
template <typename Pointer, auto Release>
using Owned = std::unique_ptr<std::remove_pointer_t<Pointer>, Releaser<Release>>;

}  // namespace platform::windows
