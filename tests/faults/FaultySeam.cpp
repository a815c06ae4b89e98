#include "faults/FaultySeam.h"

#include <array>
#include <type_traits>
#include <utility>

#include "platform/ComponentCalls.h"
#include "platform/FileCalls.h"
#include "platform/RegistryCalls.h"
#include "platform/ShellCalls.h"
#include "platform/VersionCalls.h"
#include "platform/WindowSystem.h"

namespace {

struct SeamState {
    std::array<int, static_cast<std::size_t>(Seam::Count)> calls{};
    SeamFault fault;
    bool fails = false;  // the present call
    bool passes = true;  // the test is at work, or the platform, which may call itself
    int openHandles = 0;
};

SeamState state;

std::string_view Part(std::string_view data) {
    return state.fails ? data.substr(0, data.size() / 2) : data;
}

template <typename Result>
Result Failure() {
    if constexpr (std::is_integral_v<Result>) {
        return static_cast<Result>(state.fault.result);
    } else {
        return {};
    }
}

template <typename Result, typename Real>
Result Called(Seam call, Real real) {
    if (state.passes) {
        return real();
    }
    const int occurrence = ++state.calls[static_cast<std::size_t>(call)];
    state.fails = call == state.fault.call && occurrence == state.fault.occurrence;
    if (state.fails && call != Seam::RegCloseKey && call != Seam::CloseHandle && call != Seam::WriteFile) {
        return Failure<Result>();
    }
    state.passes = true;
    Result result = real();
    state.passes = false;
    return state.fails ? Failure<Result>() : result;
}

}  // namespace

namespace platform {

#define SEAM_CALL(type, name, symbol, parameters, arguments, opened) \
    type Real##name parameters __asm__("__real_" symbol);            \
    type Wrap##name parameters __asm__("__wrap_" symbol);            \
    type Wrap##name parameters {                                     \
        return Called<type>(Seam::name, [&] {                        \
            type result = Real##name arguments;                      \
            state.openHandles += opened;                             \
            return result;                                           \
        });                                                          \
    }
#include "faults/SeamCalls.inc"
#undef SEAM_CALL

}  // namespace platform

std::string SeamName(Seam call) {
    static constexpr std::array names = {
#define SEAM_CALL(result, name, ...) #name,
#include "faults/SeamCalls.inc"
#undef SEAM_CALL
    };
    return names[static_cast<std::size_t>(call)];
}

void SeamStart(const SeamFault& fault) {
    state = {.calls = {}, .fault = fault, .fails = false, .passes = false, .openHandles = state.openHandles};
}

void SeamStop() {
    state.fails = false;
    state.passes = true;
}

int SeamCalls(Seam call) {
    return state.calls[static_cast<std::size_t>(call)];
}

int SeamOpenHandles() {
    return state.openHandles;
}
