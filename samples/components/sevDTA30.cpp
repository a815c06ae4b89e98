#include <windows.h>

#include <array>
#include <string_view>

// The initialisation function that the check calls. Ignores its argument. The environment variable VTV4V_SEVDTA_RESULT
// makes it fail: "-1" on every call, "once" only on the first call in a process.
extern "C" LONG WINAPI sevDTA_Init(const char*) {
    std::array<char, 8> result{};
    const DWORD length =
        GetEnvironmentVariableA("VTV4V_SEVDTA_RESULT", result.data(), static_cast<DWORD>(result.size()));
    const std::string_view wanted(result.data(), length < result.size() ? length : 0);
    if (wanted == "once") {
        SetEnvironmentVariableA("VTV4V_SEVDTA_RESULT", "0");
    }
    return wanted == "-1" || wanted == "once" ? -1 : 0;
}
