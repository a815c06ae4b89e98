#include "faults/FaultySeam.h"

#include <sstream>
#include <stdexcept>
#include <type_traits>

#include "platform/ComponentCalls.h"
#include "platform/FileCalls.h"
#include "platform/RegistryCalls.h"
#include "platform/ScopeExit.h"
#include "platform/ShellCalls.h"
#include "platform/VersionCalls.h"
#include "platform/WindowSystem.h"

namespace {

struct SeamState {
    SeamFault fault{};
    SeamRecord record{};
    bool isBypassed = true;  // true if the call comes from the test or from within the platform
};

SeamState state;

// A result that stands for an exception that isn't an Error.
constexpr std::int64_t Thrown = -1;

template <typename... Arguments>
void RecordStart(const Arguments&... arguments) {
    std::ostringstream text;
    ((text << arguments << '|'), ...);
    state.record.started = text.str();
}

void RecordMessage(const Text& text, const Text& /*caption*/, std::uint32_t type) {
    if (type != platform::ButtonsYesNoCancel + platform::IconQuestion &&
        type != platform::ButtonsOk + platform::IconInformation) {
        state.record.messages += DecimalText(static_cast<std::int32_t>(type)) + u" " + text;
    }
}

void WriteHalf(platform::Handle file, std::string_view data) {
    platform::WriteFile(file, data.substr(0, data.size() / 2));
}

template <typename Result>
Result Failure() {
    if constexpr (std::is_integral_v<Result>) {
        return static_cast<Result>(state.fault.result);
    } else if constexpr (std::is_same_v<Result, Text>) {
        return u"erste Zeile\r\nzweite Zeile\r\n";
    } else {
        return Result();
    }
}

// Replaces the function `real`.
template <Seam call, auto* real, typename Result, typename... Arguments>
[[gnu::used]] Result Wrapper(Arguments... arguments) {
    if (state.isBypassed) {
        return real(static_cast<Arguments&&>(arguments)...);
    }
    state.isBypassed = true;
    const platform::ScopeExit endBypass([] { state.isBypassed = false; });
    const bool fails = ++state.record.calls[call] == state.fault.occurrence && call == state.fault.call;
    if constexpr (call == Seam::ShellExecuteA || call == Seam::StartCommandLine) {
        RecordStart(arguments...);
    } else if constexpr (call == Seam::MessageBoxW) {
        RecordMessage(arguments...);
    }
    if (!fails) {
        return real(static_cast<Arguments&&>(arguments)...);
    }
    if constexpr (call == Seam::RegCloseKey || call == Seam::CloseHandle) {
        real(arguments...);
    } else if constexpr (call == Seam::WriteFile) {
        WriteHalf(arguments...);
    } else if (state.fault.result == Thrown) {
        throw std::logic_error("thrown");
    }
    return Failure<Result>();
}

template <Seam call, auto* real, typename Result, typename... Arguments>
constexpr auto WrapperOf(Result (* /*real*/)(Arguments...)) {
    return &Wrapper<call, real, Result, Arguments...>;
}

}  // namespace

// The linker redirects each call to the symbol "__wrap_NAME", defined here as an alias of the wrapper. The real
// function is "__real_NAME".
namespace platform {

#define SEAM_LINK(name, symbol)                                                                     \
    decltype(name) Real##name __asm__("__real_" symbol);                                            \
    [[gnu::used, gnu::noinline]] static void Link##name() {                                         \
        static constexpr auto* wrapper = WrapperOf<Seam::name, &Real##name>(&Real##name);           \
        __asm__ volatile(".globl __wrap_" symbol "\n\t.set __wrap_" symbol ", %c0" ::"i"(wrapper)); \
    }
SEAM_CALLS(SEAM_LINK)
#undef SEAM_LINK

}  // namespace platform

void SeamStart(const SeamFault& fault) {
    state = {.fault = fault, .isBypassed = false};
}

const SeamRecord& SeamStop() {
    state.isBypassed = true;
    return state.record;
}

std::map<std::int64_t, Text> FailuresOf(Seam call) {
    if (call <= Seam::RegSetValueExA) {
        return {{2, u"(Fehler 2)"}, {5, u"(Fehler 5)"}, {234, u"(Fehler 234)"}, {259, u"(Fehler 259)"}};
    }
    if (call <= Seam::DateLastModified) {
        return {{2, u"Datei nicht gefunden"},
                {19, u"Zugriff verweigert"},
                {112, u"Datenträger voll"},
                {1117, u"Ein-/Ausgabefehler beim Gerät"}};
    }
    if (call <= Seam::CallTextFunction) {
        return {{platform::StatusInvalidHandle, {}}};
    }
    switch (call) {
        case Seam::ShellExecuteA: return {{0, u"Unknown error"}, {3, u"Path not found"}, {32, u"DLL not found"}};
        case Seam::WindowCreate: return {{0, u"Nicht genügend Speicher"}, {Thrown, u"thrown"}};
        case Seam::MessageBoxW: return {{platform::AnswerCancel, {}}, {platform::AnswerNo, {}}};
        default: return {{0, {}}};
    }
}
