#include <windows.h>

#include <array>
#include <string_view>

// The initialisation that the check calls, with a text that is not looked at. It succeeds, unless the environment
// variable VTV4V_SEVDTA_RESULT is "-1": that is how its failure is shown.
extern "C" LONG WINAPI sevDTA_Init(const char*) {
    std::array<char, 8> result{};
    const DWORD length =
        GetEnvironmentVariableA("VTV4V_SEVDTA_RESULT", result.data(), static_cast<DWORD>(result.size()));
    return length < result.size() && std::string_view(result.data(), length) == "-1" ? -1 : 0;
}
