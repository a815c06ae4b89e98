#include "rollout/PreferencesFile.h"

#include <cstddef>
#include <filesystem>

#include "common/Error.h"
#include "common/NameGuid.h"
#include "common/modStringLibrary.h"
#include "platform/Regional.h"

namespace {

// std::filesystem::path is the standard library's simplest conversion from UTF-16 to UTF-8.
std::string Utf8(const Text& text) {
    const std::u8string bytes = std::filesystem::path(text).u8string();
    return {bytes.begin(), bytes.end()};
}

// True if XML 1.0 allows the character at `index`.
bool IsXmlCharacter(const Text& text, std::size_t index) {
    const auto surrogateAt = [&](std::size_t position, char16_t first) {
        return position < text.size() && (text[position] & 0xFC00) == first;
    };
    if (surrogateAt(index, 0xD800)) {
        return surrogateAt(index + 1, 0xDC00);
    }
    if (surrogateAt(index, 0xDC00)) {
        return surrogateAt(index - 1, 0xD800);
    }
    return (text[index] >= u' ' || text[index] == u'\t') && text[index] < 0xFFFE;
}

Text AttributeText(const Text& text) {
    const Text escaped = ReplaceAll(ReplaceAll(text, u"&", u"&amp;"), u"<", u"&lt;");
    return ReplaceAll(ReplaceAll(escaped, u"\"", u"&quot;"), u"\t", u"&#9;");
}

// `action` is "U" to update the entry's value or "D" to delete it. The item's GUID depends only on the key and name.
Text ItemText(TextView action, const Text& key, const ForcedVersionItem& entry, const Text& changed) {
    for (std::size_t index = 0; index < entry.valueName.size(); ++index) {
        if (!IsXmlCharacter(entry.valueName, index)) {
            const Text origin = action == u"D" ? u" der früheren Steuerungs-Datei" : u"";
            Raise(RuntimeError::InvalidArgument,
                  u"»" + entry.valueName + u"«" + origin + u" enthält ein Zeichen, das in XML nicht erlaubt ist");
        }
    }
    const bool isDefault = entry.valueName.empty();
    const Text valueName = AttributeText(entry.valueName);
    const Text shown = isDefault ? u"(Default)" : valueName;
    const Text guid = NameGuid(Utf8(u"HKEY_LOCAL_MACHINE\\" + key + u"\\" + platform::CharUpperW(entry.valueName)));
    return u"    <Registry clsid=\"{9CD4B2F4-923D-47f5-A062-E897DD1DAD50}\" name=\"" + shown + u"\" status=\"" + shown +
           u"\" image=\"12\" changed=\"" + changed + u"\" uid=\"" + guid +
           u"\" bypassErrors=\"1\">\r\n      <Properties action=\"" + Text(action) +
           u"\" displayDecimal=\"1\" default=\"" + (isDefault ? u"1" : u"0") +
           u"\" hive=\"HKEY_LOCAL_MACHINE\" key=\"" + key + u"\" name=\"" + valueName +
           u"\" type=\"REG_DWORD\" value=\"" + HexText(static_cast<std::uint32_t>(entry.version)) +
           u"\"/>\r\n    </Registry>\r\n";
}

Text CollectionStart(const Text& name) {
    return u"<Collection clsid=\"{53B533F5-224C-47e3-B01B-CA3B3F3FF4BF}\" name=\"" + name + u"\">\r\n";
}

Text TableText(const CheckedTable& table, const CheckedTable& removed, const Text& changed) {
    // 64-bit Windows keeps the keys of 32-bit programs in a separate branch of "Software".
    const Text key = u"SOFTWARE\\WOW6432Node" + table.Key().substr(table.Key().find(u'\\'));
    Text text = u"  " + CollectionStart(table.Section());
    for (const ForcedVersionItem& entry : table.Entries()) {
        text += ItemText(u"U", key, entry, changed);
    }
    for (const ForcedVersionItem& entry : removed.Entries()) {
        text += ItemText(u"D", key, entry, changed);
    }
    return text + u"  </Collection>\r\n";
}

}  // namespace

std::string PreferencesFileBytes(const CheckedTables& tables, const CheckedTables& removed, const Text& changed) {
    Text text = u"<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n" + CollectionStart(u"Vandrel Versions-Einstellungen");
    for (std::size_t product = 0; product < tables.size(); ++product) {
        text += TableText(tables[product], removed[product], changed);
    }
    return Utf8(text + u"</Collection>\r\n");
}
