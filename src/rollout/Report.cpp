#include "rollout/Report.h"

#include "platform/Process.h"

void PrintLine(std::int32_t stream, const Text& line) {
    Text printed;
    for (const char16_t character : line) {
        const bool isControl = character < u' ' || (character >= 0x7F && character < 0xA0);
        printed += isControl ? u"\\x" + HexText(character).substr(6) : Text(1, character);
    }
    platform::WriteConsoleW(stream, printed + u"\r\n");
}

Text EntryCounts(const CheckedTables& tables) {
    Text counts;
    for (const CheckedTable& table : tables) {
        counts += (counts.empty() ? u"" : u", ") + table.Section() + u" " +
                  DecimalText(static_cast<std::int32_t>(table.Entries().size()));
    }
    return counts;
}

Text UnreadableEntryWarning(const CheckedTable& table, const Text& label) {
    return u"Warnung: Der Eintrag " + label + u" der Tabelle [" + table.Section() +
           u"] ist nicht lesbar oder keine gültige Zahl.";
}

void Report::AddFindings(const std::vector<Text>& findings, std::int32_t skippedCount, const Text& subject) {
    for (const Text& finding : findings) {
        PrintLine(platform::StdOutputHandle, subject + finding);
    }
    skippedCount_ += skippedCount;
    warningCount_ += static_cast<std::int32_t>(findings.size()) - skippedCount;
}

RolloutResult Report::Finish(const CheckedTables& tables, const Text& more) const {
    PrintLine(platform::StdOutputHandle, u"Einträge: " + EntryCounts(tables) + u". Übersprungen: " +
                                             DecimalText(skippedCount_) + u". Warnungen: " +
                                             DecimalText(warningCount_) + u"." + more);
    return skippedCount_ + warningCount_ == 0 ? RolloutResult::Success : RolloutResult::NeedsReview;
}
