#include "rollout/Rollout.h"

#include <cstddef>
#include <optional>
#include <string>

#include "common/Error.h"
#include "common/TextFile.h"
#include "common/modDateTime.h"
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

// When the control file was last changed, so that the same file gives the same target.
Text LastChange(const Text& path) {
    double date = 0;
    RaiseFileStatus(platform::DateLastModified(platform::AnsiFromText(path), date));
    Text stamp = DateTimeStamp(date);
    // From "20171216 101640" to "2017-12-16 10:16:40".
    for (const std::size_t behind : {13U, 11U}) {
        stamp.insert(behind, u":");
    }
    for (const std::size_t behind : {6U, 4U}) {
        stamp.insert(behind, u"-");
    }
    return stamp;
}

Text CountText(const CheckedTable& table) {
    return DecimalText(static_cast<std::int32_t>(table.Entries().size()));
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
    if (arguments.empty() || arguments.size() > 2 || arguments[0].starts_with(u'-') || arguments[0] == u"/?" ||
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
    if (!target.empty() && platform::IsSameFile(platform::AnsiFromText(controlFile), platform::AnsiFromText(target))) {
        return TellFailure(target + u": Das Ziel ist die Steuerungs-Datei. Es wurde nichts geschrieben.");
    }
    if (!target.empty()) {
        const std::optional<Error> unwritten =
            TrapError([&] { WriteTarget(check, controlFile, target, ending == u".XML"); });
        if (unwritten) {
            return TellFailure(target + u": " + unwritten->description +
                               u". Das Ziel wurde nicht vollständig geschrieben.");
        }
    }
    Tell(u"Einträge in [Tallora]: " + CountText(check.Main()) + u", in [Reporting]: " + CountText(check.Reporting()) +
         u".");
    return check.HasPassedOver() ? RolloutResult::SomethingPassedOver : RolloutResult::NothingPassedOver;
}
