#include "rollout/PreferencesFile.h"

#include <filesystem>
#include <map>

#include "common/Error.h"
#include "platform/Regional.h"
#include "rollout/HexText.h"
#include "rollout/NameGuid.h"

namespace {

// The library's one conversion of UTF-16 to UTF-8 is that of its paths.
std::string Utf8(const Text& text) {
    const std::u8string bytes = std::filesystem::path(text).u8string();
    return {bytes.begin(), bytes.end()};
}

Text AttributeText(const Text& text) {
    Text escaped;
    for (const char16_t character : text) {
        switch (character) {
            case u'&':
                escaped += u"&amp;";
                break;
            case u'<':
                escaped += u"&lt;";
                break;
            case u'"':
                escaped += u"&quot;";
                break;
            case u'\t':
                escaped += u"&#9;";
                break;
            default:
                if (character < u' ') {
                    Raise(static_cast<std::int32_t>(RuntimeError::InvalidArgument),
                          u"»" + text + u"« enthält ein Steuerzeichen, das XML nicht kennt");
                }
                escaped += character;
        }
    }
    return escaped;
}

// A 32-bit program's keys below Software stand in a branch of their own.
Text RealKey(const Text& key) {
    return u"SOFTWARE\\WOW6432Node" + key.substr(key.find(u'\\'));
}

Text ItemText(const Text& key, const ForcedVersionItem& entry, const Text& changed) {
    const bool isDefault = entry.valueName.empty();
    const Text valueName = AttributeText(entry.valueName);
    const Text shown = isDefault ? u"(Default)" : valueName;
    const Text guid = NameGuid(Utf8(u"HKEY_LOCAL_MACHINE\\" + key + u"\\" + platform::CharUpperW(entry.valueName)));
    return u"    <Registry clsid=\"{9CD4B2F4-923D-47f5-A062-E897DD1DAD50}\" name=\"" + shown + u"\" status=\"" + shown +
           u"\" image=\"12\" changed=\"" + changed + u"\" uid=\"" + guid +
           u"\" bypassErrors=\"1\">\r\n      <Properties action=\"U\" displayDecimal=\"1\" default=\"" +
           (isDefault ? u"1" : u"0") + u"\" hive=\"HKEY_LOCAL_MACHINE\" key=\"" + key + u"\" name=\"" + valueName +
           u"\" type=\"REG_DWORD\" value=\"" + HexText(static_cast<std::uint32_t>(entry.version)) +
           u"\"/>\r\n    </Registry>\r\n";
}

Text CollectionStart(const Text& name) {
    return u"<Collection clsid=\"{53B533F5-224C-47e3-B01B-CA3B3F3FF4BF}\" name=\"" + name + u"\">\r\n";
}

// One item for a name, with the number that it had last: the items' GUIDs must differ.
Text TableText(const CheckedTable& table, const Text& changed) {
    std::map<Text, std::int32_t> last;
    for (const ForcedVersionItem& entry : table.Entries()) {
        last[platform::CharUpperW(entry.valueName)] = entry.version;
    }
    Text text = u"  " + CollectionStart(Text(table.Section()));
    for (const ForcedVersionItem& entry : table.Entries()) {
        if (const auto node = last.extract(platform::CharUpperW(entry.valueName))) {
            text += ItemText(RealKey(table.Key()), {entry.valueName, node.mapped()}, changed);
        }
    }
    return text + u"  </Collection>\r\n";
}

}  // namespace

std::string PreferencesFileOf(const CheckedTable& mainTable, const CheckedTable& reportingTable, const Text& changed) {
    return Utf8(u"<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n" + CollectionStart(u"Vandrel Versions-Einstellungen") +
                TableText(mainTable, changed) + TableText(reportingTable, changed) + u"</Collection>\r\n");
}
