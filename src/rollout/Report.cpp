#include "rollout/Report.h"

#include "platform/Process.h"

namespace {

Text CountText(std::size_t count) {
    return DecimalText(static_cast<std::int32_t>(count));
}

}  // namespace

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
        counts += (counts.empty() ? u"" : u", ") + table.Section() + u" " + CountText(table.Entries().size());
    }
    return counts;
}

void Report::AddFindings(const std::vector<Text>& findings, std::size_t skippedCount) {
    for (const Text& finding : findings) {
        PrintLine(platform::StdOutputHandle, finding);
    }
    skippedCount_ += skippedCount;
    warningCount_ += findings.size() - skippedCount;
}

RolloutResult Report::Finish(const CheckedTables& tables, const Text& more) const {
    PrintLine(platform::StdOutputHandle, u"Einträge: " + EntryCounts(tables) + u". Übersprungen: " +
                                             CountText(skippedCount_) + u". Warnungen: " + CountText(warningCount_) +
                                             u"." + more);
    return skippedCount_ + warningCount_ == 0 ? RolloutResult::Success : RolloutResult::NeedsReview;
}
