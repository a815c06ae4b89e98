#include "rollout/ControlFileCheck.h"

#include <algorithm>
#include <locale>
#include <optional>
#include <string>
#include <variant>

#include "common/Error.h"
#include "platform/Regional.h"
#include "version/ForcedVersionTable.h"

namespace {

constexpr std::size_t LongestValueName = 16383;   // in characters; the registry's limit
constexpr std::size_t LongestExportedName = 254;  // in bytes; an export stops at a longer name

Text Quoted(const Text& text) {
    return u"»" + text + u"«";
}

Text LineName(std::int32_t line) {
    return u"Zeile " + DecimalText(line) + u": ";
}

// Indexed by ItemError.
constexpr std::array<TextView, 4> ItemErrorTexts = {u"kein »=«", u"mehr als ein »=«", u"keine Zahl", u"negative Zahl"};

bool IsUtf8(const std::string& bytes) {
    const auto& converter = std::use_facet<std::codecvt<char16_t, char8_t, std::mbstate_t>>(std::locale::classic());
    const auto* const start = reinterpret_cast<const char8_t*>(bytes.data());
    std::mbstate_t state{};
    return converter.length(state, start, start + bytes.size(), bytes.size()) == std::ssize(bytes);
}

// Returns, in uppercase, the section name that the author of the line probably meant, or an empty string if the line
// doesn't look like a heading.
Text IntendedSection(const Text& line) {
    const Text text = Trim(line, u" \t");
    return text.starts_with(u'[') ? platform::CharUpperW(Trim(text.substr(1, text.find(u']') - 1), u" \t")) : Text();
}

}  // namespace

void ControlFileCheck::Warn(const Text& warning) {
    findings_.push_back(u"Warnung: " + warning);
}

void ControlFileCheck::Warn(std::int32_t line, const Text& warning) {
    Warn(LineName(line) + warning);
}

void ControlFileCheck::Read(const Text& path) {
    ControlFileReader file(path);
    const std::optional<Error> error = TrapError([&] {
        while (file.NextLine()) {
            CheckLine(file);
        }
    });
    if (error) {
        Raise(error->number, LineName(file.Number()) + error->description);
    }
    CheckFile();
}

void ControlFileCheck::CheckLine(const ControlFileReader& file) {
    CheckEncoding(file.Line());
    const std::optional<std::size_t> product = ProductIndex(file.Section());
    if (product && file.IsHeading()) {
        hasSection_[*product] = true;
        return;
    }
    CheckHeading(file);
    if (product) {
        CheckItems(file, tables_[*product]);
    }
}

// Rejects UTF-16, detected by zero bytes or a byte order mark: an import would find no section in such a file and
// would clear all tables. If the code page is UTF-8, invalid bytes have already become U+FFFD.
void ControlFileCheck::CheckEncoding(const Text& line) {
    const std::string bytes = platform::AnsiFromText(line);
    if (bytes.find('\0') != std::string::npos || bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        Raise(RuntimeError::InvalidArgument, u"kein Text in der ANSI-Codepage, vielleicht UTF-16");
    }
    if (!IsUtf8(bytes) || line.find(u'\uFFFD') != Text::npos) {
        encoding_ = Encoding::Other;
    } else if (encoding_ == Encoding::Ascii && std::ranges::any_of(line, [](char16_t unit) { return unit >= 0x80; })) {
        encoding_ = Encoding::Utf8;
    }
}

void ControlFileCheck::CheckHeading(const ControlFileReader& file) {
    const Text intended = IntendedSection(file.Line());
    for (const CheckedTable& table : tables_) {
        if (intended == platform::CharUpperW(table.Section())) {
            Warn(file.Number(), Quoted(file.Line()) + u" gilt nicht als Kopf [" + table.Section() + u"].");
        }
    }
}

// An empty item after a trailing ";" isn't an error.
void ControlFileCheck::CheckItems(const ControlFileReader& file, CheckedTable& table) {
    std::vector<Text> items = Split(file.Line(), u';');
    std::erase(items, Text());
    if (items.empty()) {
        items.emplace_back();
    }
    for (const Text& item : items) {
        const auto parsed = ParseItem(item);
        if (const auto* const error = std::get_if<ItemError>(&parsed)) {
            ++skippedCount_;
            findings_.push_back(LineName(file.Number()) + Quoted(items.size() == 1 ? file.Line() : item) +
                                u" wird übersprungen: " + Text(ItemErrorTexts[static_cast<std::size_t>(*error)]));
        } else {
            CheckEntry(file.Number(), std::get<ForcedVersionItem>(parsed), table);
        }
    }
}

void ControlFileCheck::CheckEntry(std::int32_t line, const ForcedVersionItem& entry, CheckedTable& table) {
    if (entry.valueName.size() > LongestValueName) {
        Raise(RuntimeError::InvalidArgument, u"Der Name ist länger als " + DecimalText(LongestValueName) + u" Zeichen");
    }
    const Text name = Quoted(ItemNameOf(entry.valueName));
    if (platform::AnsiFromText(entry.valueName).size() > LongestExportedName) {
        Warn(line, u"Der Name " + name + u" ist zu lang; ein Export bricht bei diesem Eintrag ab.");
    }
    if (entry.valueName != Trim(entry.valueName)) {
        Warn(line, u"Die Leerzeichen am Anfang oder Ende gehören zum Namen " + name + u".");
    }
    if (entry.valueName.find(u'\\') != Text::npos) {
        Warn(line, name + u" enthält »\\«; zwischen Domäne und Benutzer gehört ein Punkt.");
    }
    if (const std::optional<std::int32_t> earlier = table.Add(entry, line)) {
        Warn(line, name + u" steht schon in Zeile " + DecimalText(*earlier) + u"; die letzte Zahl gilt.");
    }
    if (VersionName(entry.version).empty()) {
        Warn(line, DecimalText(entry.version) + u" ist keine Version der Versionsliste.");
    }
}

void ControlFileCheck::CheckFile() {
    const bool isUtf8Wanted = platform::GetACP() == platform::CodePageUtf8;
    if (encoding_ == (isUtf8Wanted ? Encoding::Other : Encoding::Utf8)) {
        const Text negation = isUtf8Wanted ? u"nicht " : u"";
        Warn(u"Die Datei ist " + negation + u"in UTF-8 gespeichert; ein Import verfälscht ihre Umlaute.");
    }
    for (std::size_t product = 0; product < Products.size(); ++product) {
        if (!hasSection_[product]) {
            Warn(u"Der Abschnitt [" + tables_[product].Section() + u"] fehlt; ein Import leert seine Tabelle.");
        }
    }
    if (std::ranges::count(hasSection_, true) == 0) {
        Raise(RuntimeError::InvalidArgument,
              u"kein Abschnitt [Tallora] oder [Reporting]; ein Import würde alle Tabellen leeren");
    }
}
