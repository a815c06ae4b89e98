#include "faults/FaultySeam.h"

#include <stdexcept>
#include <type_traits>
#include <utility>

#include "Check.h"
#include "common/Conversion.h"
#include "platform/ComponentCalls.h"
#include "platform/FileCalls.h"
#include "platform/RegistryCalls.h"
#include "platform/ShellCalls.h"
#include "platform/VersionCalls.h"
#include "platform/WindowSystem.h"

namespace {

struct SeamState {
    SeamCounts calls{};
    SeamFault fault;
    Text told{};
    bool fails = false;  // the present call
    bool passes = true;  // the test is at work, or the platform, which may call itself
    int openHandles = 0;
};

SeamState state;

std::string_view Part(std::string_view data) {
    return state.fails ? data.substr(0, data.size() / 2) : data;
}

// Of the four icons the critical one and the exclamation have this bit.
const Text& Noted(const Text& text, std::uint32_t type) {
    state.told += (type & platform::IconCritical) == 0 ? Text() : text;
    return text;
}

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
        return {{2, u"Datei nicht gefunden"}, {3, u"Pfad nicht gefunden"}, {5, u"Fehler beim Zugriff auf Pfad/Datei"},
                {32, u"Zugriff verweigert"},  {112, u"Datenträger voll"},  {1117, u"Ein-/Ausgabefehler beim Gerät"}};
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
        default:
            return {{0, {}}};
    }
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
    ++state.calls[static_cast<std::size_t>(call)];
    state.fails = call == state.fault.call && state.calls.Of(call) == state.fault.occurrence;
    if (state.fails && call == Seam::WindowCreate && state.fault.result == Thrown) {
        throw std::logic_error("thrown");
    }
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

void SeamStart(const SeamFault& fault) {
    state = {.fault = fault, .passes = false, .openHandles = state.openHandles};
}

Text SeamStop() {
    state.fails = false;
    state.passes = true;
    return state.told;
}

SeamCounts SeamCalls() {
    return state.calls;
}

int SeamOpenHandles() {
    return state.openHandles;
}

void EachFault(const SeamCounts& earlier, const SeamCounts& all,
               const std::function<void(const SeamFault& fault, const Text& description)>& check) {
    static constexpr std::array names = {
#define SEAM_CALL(result, name, ...) #name,
#include "faults/SeamCalls.inc"
#undef SEAM_CALL
    };
    for (std::size_t place = 0; place < all.size(); ++place) {
        const auto call = static_cast<Seam>(place);
        INFO(std::string(names[place]));
        for (int occurrence = earlier.Of(call) + 1; occurrence <= all.Of(call); ++occurrence) {
            CAPTURE(occurrence);
            for (const auto& failure : FailuresOf(call)) {
                INFO("result ", failure.first);
                check({call, occurrence, failure.first}, failure.second);
            }
        }
    }
}
