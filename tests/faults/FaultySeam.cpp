#include "faults/FaultySeam.h"

#include <concepts>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "Check.h"
#include "SeamSymbols.h"
#include "common/Conversion.h"
#include "platform/ComponentCalls.h"
#include "platform/FileCalls.h"
#include "platform/Regional.h"
#include "platform/RegistryCalls.h"
#include "platform/ShellCalls.h"
#include "platform/VersionCalls.h"

namespace {

struct SeamState {
    SeamCounts calls{};
    SeamFault fault;
    SeamHook hook;
    Text told{};
    Text started{};
    std::string shown{};
    bool fails = false;  // the present call
    bool passes = true;  // the test is at work, or the platform, which may call itself
    int openHandles = 0;
    platform::Handle window = 0;
    platform::WindowEvents events{};
};

SeamState state;

constexpr std::array Names = {
#define SEAM_CALL(name) #name,
#include "faults/SeamCalls.inc"
#undef SEAM_CALL
};

// A result that is an exception, none of the language's errors.
constexpr std::int64_t Thrown = -1;

using Failures = std::map<std::int64_t, Text>;

// The results with which a call can fail, each with what a message that goes on behind its head ends in.
Failures FailuresOf(Seam call) {
    if (call <= Seam::RegSetValueExA) {
        Failures failures;
        for (const int status : {2, 5, 6, 112, 234, 259, 1018}) {
            failures[status] = u"(Fehler " + DecimalText(status) + u")";
        }
        return failures;
    }
    if (call <= Seam::DateLastModified) {
        return {{2, u"Datei nicht gefunden"},
                {3, u"Pfad nicht gefunden"},
                {5, u"Fehler beim Zugriff auf Pfad/Datei"},
                {19, u"Zugriff verweigert"},
                {32, u"Zugriff verweigert"},
                {33, u"Zugriff verweigert"},
                {39, u"Datenträger voll"},
                {53, u"Pfad nicht gefunden"},
                {67, u"Pfad nicht gefunden"},
                {112, u"Datenträger voll"},
                {206, u"Dateiname oder -nummer falsch"},
                {1117, u"Ein-/Ausgabefehler beim Gerät"},
                {1295, u"Datenträger voll"}};
    }
    switch (call) {
        case Seam::ShellExecuteA:
            return {{0, u"Unknown error"},
                    {2, u"File not found"},
                    {3, u"Path not found"},
                    {5, u"Access denied"},
                    {31, u"No association for file extension"},
                    {32, u"DLL not found"}};
        case Seam::WindowCreate:
            return {{0, u"Nicht genügend Speicher"}, {Thrown, u"thrown"}};
        case Seam::CreateObject:
        case Seam::CallTextFunction:
        case Seam::CloseHandle:
            return {{platform::StatusInvalidHandle, {}}};
        case Seam::GetFileVersionInfoSizeA:
            return {{-1, {}}, {0, {}}};
        case Seam::DoEvents:
        case Seam::ControlPlace:
        case Seam::ControlColours:
        case Seam::ControlVisible:
        case Seam::LockWindowUpdate:
        case Seam::ShowWindow:
        case Seam::SetWindowLongA:
            return {};
        default:
            return {{0, {}}};
    }
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

template <std::integral Number>
std::string Shown(Number number) {
    return " " + std::to_string(number);
}

std::string Shown(const platform::Rectangle& place) {
    return Shown(place.left) + Shown(place.top) + Shown(place.width) + Shown(place.height);
}

// What a call did to a window: all its arguments but the window's handle.
template <Seam call, typename... Arguments>
void NoteWindow(const Arguments&... arguments) {
    if constexpr (call >= Seam::ControlPlace && call < Seam::Count) {
        const std::string all = (Shown(arguments) + ...);
        const std::size_t second = call == Seam::LockWindowUpdate ? 0 : all.find(' ', 1);
        state.shown += Names[static_cast<std::size_t>(call)] + all.substr(second) + "\n";
    }
}

// What is kept of a call's arguments for the test; of most calls nothing.
template <Seam call, typename... Arguments>
void Note(const Arguments&...) {
}

// Of the four icons the critical one and the exclamation have this bit.
template <>
void Note<Seam::MessageBoxW>(const Text& text, const Text& /*caption*/, const std::uint32_t& type) {
    CHECK((type & ~(platform::ButtonsYesNoCancel | platform::IconCritical | platform::IconQuestion |
                    platform::IconInformation)) == 0);
    state.told += (type & platform::IconCritical) == 0 ? Text() : text;
}

template <>
void Note<Seam::WindowCreate>(const platform::WindowDesign& design, const platform::WindowEvents& events) {
    state.events = events;
    state.shown += platform::AnsiFromText(design.caption) + Shown(design.client.width) + Shown(design.client.height) +
                   Shown(design.icon) + "\n";
    for (const platform::Control& control : design.controls) {
        state.shown += platform::AnsiFromText(control.caption) + Shown(control.place) + "\n";
    }
}

template <>
void Note<Seam::ShellExecuteA>(const platform::Handle& /*owner*/, const std::string& verb, const std::string& file,
                               const std::string& parameters, const std::string& directory, const std::int32_t& show) {
    for (const std::string& text : {verb, file, parameters, directory}) {
        state.started += platform::TextFromAnsi(text) + u"|";
    }
    state.started += DecimalText(show);
}

template <>
void Note<Seam::StartCommandLine>(const std::string& command, const std::int32_t& windowStyle,
                                  const std::int32_t& /*processId*/) {
    state.started += platform::TextFromAnsi(command) + u"|" + DecimalText(windowStyle) + u"|";
}

template <>
void Note<Seam::WaitForSingleObject>(const platform::Handle& /*process*/, const std::uint32_t& milliseconds) {
    state.started += DecimalText(static_cast<std::int32_t>(milliseconds));
}

// A write that fails has written a half.
template <typename Argument>
Argument&& Shortened(Argument& argument) {
    if constexpr (std::is_same_v<Argument, std::string_view>) {
        argument = state.fails ? argument.substr(0, argument.size() / 2) : argument;
    }
    return static_cast<Argument&&>(argument);
}

// Counts the handles that a call which was made has opened or closed.
template <Seam call, typename Result, typename... Arguments>
void CountHandles(const Result& result, const Arguments&... arguments) {
    if constexpr (call == Seam::RegCloseKey) {
        state.openHandles -= ((arguments > 0) + ...);  // the predefined roots are not closed
    } else if constexpr (call == Seam::CloseHandle) {
        --state.openHandles;
    } else if constexpr (call == Seam::OpenProcess) {
        state.openHandles += result != 0 ? 1 : 0;
    } else if constexpr (call == Seam::WindowCreate) {
        state.window = result;
    }
}

// The handle that a call gives back is its one output of that type.
template <Seam call, typename Argument>
int OpenedBy(const std::remove_reference_t<Argument>& argument) {
    if constexpr ((call == Seam::RegOpenKeyExA || call == Seam::RegCreateKeyExA || call == Seam::CreateFileA) &&
                  std::is_same_v<Argument, platform::Handle&>) {
        return argument != 0 ? 1 : 0;
    }
    return 0;
}

// Takes the place of the call whose declaration `real` has.
template <Seam call, auto* real, typename Function>
struct Wrapper;

template <Seam call, auto* real, typename Result, typename... Arguments>
struct Wrapper<call, real, Result(Arguments...)> {
    [[gnu::used]] static Result Call(Arguments... arguments) {
        if (state.passes) {
            return real(static_cast<Arguments&&>(arguments)...);
        }
        ++state.calls[static_cast<std::size_t>(call)];
        state.fails = call == state.fault.call && state.calls.Of(call) == state.fault.occurrence;
        state.passes = true;
        const Passing passing;
        if (call == state.hook.call && state.calls.Of(call) == state.hook.occurrence) {
            state.hook.action();
        }
        NoteWindow<call>(arguments...);
        Note<call>(arguments...);
        if constexpr (std::is_void_v<Result>) {
            real(static_cast<Arguments&&>(arguments)...);
        } else {
            constexpr bool isMade = call == Seam::RegCloseKey || call == Seam::CloseHandle || call == Seam::WriteFile;
            if (state.fails && call == Seam::WindowCreate && state.fault.result == Thrown) {
                throw std::logic_error("thrown");
            }
            if (state.fails && !isMade) {
                return Failure<Result>();
            }
            Result result = real(Shortened<Arguments>(arguments)...);
            CountHandles<call>(result, arguments...);
            ((state.openHandles += OpenedBy<call, Arguments>(arguments)), ...);
            return state.fails ? Failure<Result>() : result;
        }
    }

private:
    struct Passing {
        ~Passing() { state.passes = false; }
    };
};

template <Seam call, auto* real, typename Result, typename... Arguments>
struct Wrapper<call, real, Result(Arguments...) noexcept> : Wrapper<call, real, Result(Arguments...)> {};

}  // namespace

// The linker leads each call to the symbol "__wrap_" and its own, which is made another name of the wrapper's function,
// and the real call's symbol is "__real_" and its own.
namespace platform {

#define SEAM_CALL(name)                                                                                 \
    decltype(name) Real##name __asm__("__real_" SEAM_SYMBOL_##name);                                    \
    [[gnu::used, gnu::noinline]] static void Link##name() {                                             \
        __asm__ volatile(".globl __wrap_" SEAM_SYMBOL_##name "\n\t.set __wrap_" SEAM_SYMBOL_##name      \
                         ", %c0" ::"i"(&Wrapper<Seam::name, &Real##name, decltype(Real##name)>::Call)); \
    }
#include "faults/SeamCalls.inc"
#undef SEAM_CALL

}  // namespace platform

void SeamStart(const SeamFault& fault, const SeamHook& hook) {
    state = {.fault = fault, .hook = hook, .passes = false, .openHandles = state.openHandles};
}

Text SeamStop() {
    state.fails = false;
    state.passes = true;
    return state.told;
}

bool SeamCounting() {
    return !state.passes;
}

SeamCounts SeamCalls() {
    return state.calls;
}

Text SeamStarted() {
    return state.started;
}

std::string SeamShown() {
    return state.shown;
}

int SeamOpenHandles() {
    return state.openHandles;
}

void SeamClick(std::size_t control) {
    state.passes = false;
    state.events.clicked(control);
    state.passes = true;
}

void SeamResize(platform::Size size) {
    state.passes = false;
    platform::WindowOuterSize(state.window, size);
    state.passes = true;
}

void SeamWindowDestroy() {
    platform::WindowDestroy(state.window);
}

void EachFault(const SeamCounts& earlier, const SeamCounts& all,
               const std::function<void(const SeamFault& fault, const Text& description)>& check) {
    for (std::size_t place = 0; place < all.size(); ++place) {
        const auto call = static_cast<Seam>(place);
        INFO(std::string(Names[place]));
        for (int occurrence = earlier.Of(call) + 1; occurrence <= all.Of(call); ++occurrence) {
            CAPTURE(occurrence);
            for (const auto& failure : FailuresOf(call)) {
                INFO("result ", failure.first);
                check({call, occurrence, failure.first}, failure.second);
            }
        }
    }
}
