#pragma once

#include "platform/ScopeExit.h"
#include "platform/windows/Win32.h"

namespace platform::windows {

// Initialises COM on the calling thread; the shell functions need it too. COM stays initialised until the process
// exits.
inline void EnterApartment() {
    static const HRESULT entered = ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    static const ScopeExit leave([] {
        if (SUCCEEDED(entered)) {
            ::CoUninitialize();
        }
    });
}

}  // namespace platform::windows
