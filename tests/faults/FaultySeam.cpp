#include "faults/FaultySeam.h"

#include <stdexcept>
#include <type_traits>

#include "Check.h"
#include "common/Conversion.h"
#include "platform/ComponentCalls.h"
#include "platform/FileCalls.h"
#include "platform/Regional.h"
#include "platform/RegistryCalls.h"
#include "platform/ShellCalls.h"
#include "platform/VersionCalls.h"

namespace {

struct SeamState {
    std::map<Seam, int> calls{};
    SeamFault fault;
    SeamHook hook;
    Text messages{};
    std::string started{};
    bool isBypassed = true;  // true if the call comes from the test or from within the platform
    platform::Handle window = 0;
    platform::WindowEvents events{};
};

SeamState state;

// A result that stands for an exception that isn't an Error.
constexpr std::int64_t Thrown = -1;

// Record the arguments of a call.
void Record(const platform::WindowDesign& /*design*/, const platform::WindowEvents& events) {
    state.events = events;
}

void Record(platform::Handle owner, const std::string& verb, const std::string& file, const std::string& arguments,
            const std::string& folder, std::int32_t show) {
    state.started =
        std::to_string(owner) + "|" + verb + "|" + file + "|" + arguments + "|" + folder + "|" + std::to_string(show);
}

void Record(const std::string& commandLine, std::int32_t show, std::int32_t /*processId*/) {
    state.started = commandLine + "|" + std::to_string(show);
}

void Record(const Text& text, const Text& /*caption*/, std::uint32_t type) {
    if (type != platform::ButtonsYesNoCancel + platform::IconQuestion &&
        type != platform::ButtonsOk + platform::IconInformation) {
        state.messages += DecimalText(static_cast<std::int32_t>(type)) + u" " + text;
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

struct ScopedBypass {
    ScopedBypass() { state.isBypassed = true; }
    ~ScopedBypass() { state.isBypassed = false; }
    ScopedBypass(const ScopedBypass&) = delete;
    ScopedBypass& operator=(const ScopedBypass&) = delete;
};

// Replaces the function `real`.
template <Seam call, auto* real, typename Function>
struct Wrapper;

template <Seam call, auto* real, typename Result, typename... Arguments>
struct Wrapper<call, real, Result(Arguments...)> {
    [[gnu::used]] static Result Call(Arguments... arguments) {
        if (state.isBypassed) {
            return real(static_cast<Arguments&&>(arguments)...);
        }
        const int occurrence = ++state.calls[call];
        if (call == state.hook.call && occurrence == state.hook.occurrence) {
            state.hook.action();
        }
        const ScopedBypass bypass;
        if constexpr (call == Seam::MessageBoxW || call == Seam::ShellExecuteA || call == Seam::StartCommandLine ||
                      call == Seam::WindowCreate) {
            Record(arguments...);
        }
        if (call == state.fault.call && occurrence == state.fault.occurrence) {
            return Failed(arguments...);
        }
        if constexpr (call == Seam::WindowCreate) {
            return state.window = real(static_cast<Arguments&&>(arguments)...);
        } else {
            return real(static_cast<Arguments&&>(arguments)...);
        }
    }

private:
    static Result Failed(const Arguments&... arguments) {
        if constexpr (call == Seam::RegCloseKey || call == Seam::CloseHandle) {
            real(arguments...);
        } else if constexpr (call == Seam::WriteFile) {
            WriteHalf(arguments...);
        } else if (call == Seam::WindowCreate && state.fault.result == Thrown) {
            throw std::logic_error("thrown");
        }
        return Failure<Result>();
    }
};

template <Seam call, auto* real, typename Result, typename... Arguments>
struct Wrapper<call, real, Result(Arguments...) noexcept> : Wrapper<call, real, Result(Arguments...)> {};

}  // namespace

// The linker redirects each call to the symbol "__wrap_NAME", defined here as an alias of the wrapper. The real
// function is "__real_NAME".
namespace platform {

#define SEAM_LINK(name, symbol)                                                                         \
    decltype(name) Real##name __asm__("__real_" symbol);                                                \
    [[gnu::used, gnu::noinline]] static void Link##name() {                                             \
        __asm__ volatile(".globl __wrap_" symbol "\n\t.set __wrap_" symbol                              \
                         ", %c0" ::"i"(&Wrapper<Seam::name, &Real##name, decltype(Real##name)>::Call)); \
    }
SEAM_CALLS(SEAM_LINK)
#undef SEAM_LINK

}  // namespace platform

void SeamStart(const SeamFault& fault, const SeamHook& hook) {
    state = {.fault = fault, .hook = hook, .isBypassed = false};
}

Text SeamStop() {
    state.isBypassed = true;
    return state.messages;
}

std::map<Seam, int> SeamCalls() {
    return state.calls;
}

std::string SeamStarted() {
    return state.started;
}

platform::Handle SeamWindow() {
    return state.window;
}

platform::WindowEvents SeamEvents() {
    return state.events;
}

std::map<std::int64_t, Text> FailuresOf(Seam call) {
    if (call <= Seam::RegSetValueExA) {
        return {{2, u"(Fehler 2)"}, {5, u"(Fehler 5)"}, {234, u"(Fehler 234)"}, {259, u"(Fehler 259)"}};
    }
    if (call <= Seam::DateLastModified) {
        return {{2, u"Datei nicht gefunden"},
                {19, u"Zugriff verweigert"},
                {39, u"Datenträger voll"},
                {112, u"Datenträger voll"},
                {206, u"Dateiname oder -nummer falsch"},
                {1117, u"Ein-/Ausgabefehler beim Gerät"}};
    }
    switch (call) {
        case Seam::ShellExecuteA: return {{0, u"Unknown error"}, {3, u"Path not found"}, {32, u"DLL not found"}};
        case Seam::WindowCreate: return {{0, u"Nicht genügend Speicher"}, {Thrown, u"thrown"}};
        case Seam::RegCloseKey:
        case Seam::CloseHandle:
        case Seam::CreateObject:
        case Seam::CallTextFunction: return {{platform::StatusInvalidHandle, {}}};
        case Seam::MessageBoxW: return {{platform::AnswerCancel, {}}, {platform::AnswerNo, {}}};
        case Seam::DoEvents: return {};
        default: return {{0, {}}};
    }
}
