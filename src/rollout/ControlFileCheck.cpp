#include "rollout/ControlFileCheck.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "common/Error.h"
#include "platform/Regional.h"
#include "version/ForcedVersionTable.h"

namespace {

Text Quoted(const Text& text) {
    return u"»" + text + u"«";
}

Text LineName(std::int32_t line) {
    return u"Zeile " + DecimalText(line);
}

Text ReasonOf(ItemFault fault) {
    switch (fault) {
        case ItemFault::NoEquals:
            return u"kein »=«";
        case ItemFault::SeveralEquals:
            return u"mehr als ein »=«";
        case ItemFault::NoNumber:
            return u"keine Zahl";
        case ItemFault::NegativeNumber:
            return u"negative Zahl";
    }
    return {};
}

bool IsInVersionList(std::int32_t version) {
    const std::vector<Text> items = Split(ForcedVersionTable::Versions(), u';');
    return std::any_of(items.begin(), items.end(), [&](const Text& item) {
        const auto judged = JudgeItem(item);
        const auto* const entry = std::get_if<ForcedVersionItem>(&judged);
        return entry != nullptr && entry->version == version;
    });
}

// The number of bytes of the UTF-8 character that begins with `lead`; 0 when none does.
std::size_t Utf8Length(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
}

bool IsAscii(const std::string& bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

bool IsUtf8(const std::string& bytes) {
    for (std::size_t place = 0; place < bytes.size();) {
        const std::size_t length = Utf8Length(static_cast<unsigned char>(bytes[place]));
        if (length == 0 || place + length > bytes.size()) {
            return false;
        }
        for (std::size_t next = place + 1; next < place + length; ++next) {
            if ((static_cast<unsigned char>(bytes[next]) & 0xC0) != 0x80) {
                return false;
            }
        }
        place += length;
    }
    return true;
}

// The section that a person means by a line, in capital letters; empty for a line that looks like no head.
Text MeantSection(const Text& line) {
    const Text head = Trim(line, u" \t");
    return head.starts_with(u'[') ? platform::CharUpperW(Trim(head.substr(1, head.find(u']') - 1), u" \t")) : Text();
}

}  // namespace

Text CheckedTable::Key() const {
    return Text(registryPath_) + u"\\" + Text(VersionSection) + u"\\" + Text(TableKey);
}

std::int32_t CheckedTable::Add(const ForcedVersionItem& entry, std::int32_t line) {
    entries_.push_back(entry);
    const auto [found, isNew] = lines_.try_emplace(platform::CharUpperW(entry.valueName), line);
    return isNew ? 0 : std::exchange(found->second, line);
}

void ControlFileCheck::Warn(std::int32_t line, const Text& warning) {
    findings_.push_back(u"Warnung: " + LineName(line) + u": " + warning);
}

void ControlFileCheck::Read(const Text& path) {
    ControlFileReader file(path);
    const std::optional<Error> error = TrapError([&] {
        while (file.NextLine()) {
            CheckLine(file);
        }
    });
    if (error) {
        Raise(error->number, LineName(file.Number()) + u": " + error->description);
    }
    if (encoding_ == Encoding::Utf8) {
        findings_.emplace_back(u"Warnung: Die Datei ist in UTF-8 gespeichert; ein Import verfälscht ihre Umlaute.");
    }
    for (const CheckedTable* const table : {&main_, &reporting_}) {
        if (!table->IsThere()) {
            findings_.push_back(u"Warnung: Der Abschnitt [" + Text(table->Section()) +
                                u"] fehlt; ein Import leert seine Tabelle.");
        }
    }
}

void ControlFileCheck::CheckLine(const ControlFileReader& file) {
    CheckEncoding(file);
    CheckedTable* const table = file.Section() == MainSection        ? &main_
                                : file.Section() == ReportingSection ? &reporting_
                                                                     : nullptr;
    if (table != nullptr && file.IsHead()) {
        table->Enter();
        return;
    }
    CheckHead(file);
    if (table != nullptr) {
        CheckItems(file, *table);
    }
}

// A file in UTF-16 holds a zero in or beside nearly every character: an import finds neither section in it, and empties
// both tables.
void ControlFileCheck::CheckEncoding(const ControlFileReader& file) {
    const std::string bytes = platform::AnsiFromText(file.Line());
    if (bytes.find('\0') != std::string::npos || bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        Raise(static_cast<std::int32_t>(RuntimeError::TypeMismatch),
              u"kein Text in der 8-Bit-Codepage, vielleicht UTF-16");
    }
    if (!IsUtf8(bytes)) {
        encoding_ = Encoding::CodePage;
    } else if (encoding_ == Encoding::Ascii && !IsAscii(bytes)) {
        encoding_ = Encoding::Utf8;
    }
}

void ControlFileCheck::CheckHead(const ControlFileReader& file) {
    const Text meant = MeantSection(file.Line());
    for (const CheckedTable* const table : {&main_, &reporting_}) {
        if (meant == platform::CharUpperW(Text(table->Section()))) {
            Warn(file.Number(),
                 Quoted(file.Line()) + u" beginnt nicht den Abschnitt [" + Text(table->Section()) + u"].");
        }
    }
}

// The empty piece behind a ";" at the line's end is no loss.
void ControlFileCheck::CheckItems(const ControlFileReader& file, CheckedTable& table) {
    std::vector<Text> pieces = Split(file.Line(), u';');
    std::erase(pieces, Text());
    if (pieces.empty()) {
        pieces.emplace_back();
    }
    for (const Text& piece : pieces) {
        const auto judged = JudgeItem(piece);
        if (const auto* const fault = std::get_if<ItemFault>(&judged)) {
            hasPassedOver_ = true;
            findings_.push_back(LineName(file.Number()) + u": " + Quoted(pieces.size() == 1 ? file.Line() : piece) +
                                u" wird übersprungen: " + ReasonOf(*fault));
        } else {
            CheckEntry(file.Number(), std::get<ForcedVersionItem>(judged), table);
        }
    }
}

void ControlFileCheck::CheckEntry(std::int32_t line, const ForcedVersionItem& entry, CheckedTable& table) {
    const Text name = Quoted(ItemNameOf(entry.valueName));
    if (entry.valueName != Trim(entry.valueName)) {
        Warn(line, u"Die Leerzeichen an den Enden gehören zum Namen " + name + u".");
    }
    if (const std::int32_t earlier = table.Add(entry, line); earlier != 0) {
        Warn(line, name + u" steht schon in Zeile " + DecimalText(earlier) + u"; die letzte Zahl gilt.");
    }
    if (!IsInVersionList(entry.version)) {
        Warn(line, DecimalText(entry.version) + u" ist keine Version der Versionsliste.");
    }
}
