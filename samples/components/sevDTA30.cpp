#include <windows.h>

#include <array>
#include <string_view>

// The initialisation that the check calls, with a text that is not looked at. It succeeds, unless the environment
// variable VTV4V_SEVDTA_RESULT is "-1": that is how its failure is shown. "once" makes the process's first call fail,
// so that a machine is mended while the program runs.
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
