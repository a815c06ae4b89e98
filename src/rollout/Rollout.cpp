#include "rollout/Rollout.h"

#include <chrono>
#include <cmath>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include "common/Error.h"
#include "common/TextFile.h"
#include "common/modStringLibrary.h"
#include "platform/FileCalls.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "rollout/ControlFileCheck.h"
#include "rollout/PreferencesFile.h"
#include "rollout/RegistryFile.h"

namespace {

constexpr TextView Usage = u"Aufruf: vtv4v-reg STEUERDATEI [ZIEL.reg | ZIEL.xml]";

void Tell(const Text& line) {
    platform::WriteConsoleW(platform::StdOutputHandle, line + u"\r\n");
}

RolloutResult TellFailure(const Text& line) {
    platform::WriteConsoleW(platform::StdErrorHandle, line + u"\r\n");
    return RolloutResult::NothingWritten;
}

Text Digits(unsigned number, std::int16_t width) {
    return ZeroPadLong(static_cast<std::int32_t>(number), width);
}

// When the control file was last changed, so that the same file gives the same target.
Text LastChange(const Text& path) {
    using namespace std::chrono;
    double date = 0;
    RaiseFileStatus(platform::DateLastModified(platform::AnsiFromText(path), date));
    const seconds moment(std::llround(date * 86400));
    const days day = floor<days>(moment);
    const year_month_day calendar(sys_days(year(1899) / 12 / 30) + day);
    const hh_mm_ss clock(moment - day);
    return Digits(static_cast<unsigned>(static_cast<int>(calendar.year())), 4) + u"-" +
           Digits(static_cast<unsigned>(calendar.month()), 2) + u"-" +
           Digits(static_cast<unsigned>(calendar.day()), 2) + u" " +
           Digits(static_cast<unsigned>(clock.hours().count()), 2) + u":" +
           Digits(static_cast<unsigned>(clock.minutes().count()), 2) + u":" +
           Digits(static_cast<unsigned>(clock.seconds().count()), 2);
}

Text CountText(const CheckedTable& table) {
    return DecimalText(static_cast<std::int32_t>(table.Entries().size()));
}

bool IsSameFile(const Text& path, const Text& other) {
    std::error_code error;
    return std::filesystem::equivalent(std::filesystem::path(path), std::filesystem::path(other), error) && !error;
}

void WriteTarget(const ControlFileCheck& check, const Text& controlFile, const Text& target, bool isXml) {
    WriteBytes(target,
               isXml ? PreferencesFileOf(check.Main(), check.Reporting(), LastChange(controlFile))
                     : RegistryFileOf(check.Main(), check.Reporting()),
               true);
}

}  // namespace

RolloutResult RunRollout(const std::vector<Text>& arguments) {
    const Text target = arguments.size() == 2 ? arguments[1] : Text();
    const Text ending = platform::CharUpperW(target.substr(target.size() < 4 ? 0 : target.size() - 4));
    if (arguments.empty() || arguments.size() > 2 ||
        (arguments.size() == 2 && ending != u".REG" && ending != u".XML")) {
        return TellFailure(Text(Usage));
    }
    const Text& controlFile = arguments[0];
    ControlFileCheck check;
    const std::optional<Error> unreadable = TrapError([&] { check.Read(controlFile); });
    for (const Text& finding : check.Findings()) {
        Tell(finding);
    }
    if (unreadable) {
        return TellFailure(controlFile + u": " + unreadable->description + u". Es wurde nichts geschrieben.");
    }
    if (!target.empty() && IsSameFile(controlFile, target)) {
        return TellFailure(target + u": Das Ziel ist die Steuerungs-Datei. Es wurde nichts geschrieben.");
    }
    if (!target.empty()) {
        const std::optional<Error> unwritten =
            TrapError([&] { WriteTarget(check, controlFile, target, ending == u".XML"); });
        if (unwritten) {
            return TellFailure(target + u": " + unwritten->description + u". Es wurde nichts geschrieben.");
        }
    }
    Tell(u"Einträge in [Tallora]: " + CountText(check.Main()) + u", in [Reporting]: " + CountText(check.Reporting()) +
         u".");
    return check.HasPassedOver() ? RolloutResult::SomethingPassedOver : RolloutResult::NothingPassedOver;
}
