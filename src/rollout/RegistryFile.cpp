#include "rollout/RegistryFile.h"

#include "rollout/HexText.h"

namespace {

// Quotes and backslashes are doubled by a backslash, in value names as in texts.
Text QuotedName(const Text& name) {
    if (name.empty()) {
        return u"@";
    }
    Text quoted = u"\"";
    for (const char16_t character : name) {
        if (character == u'"' || character == u'\\') {
            quoted += u'\\';
        }
        quoted += character;
    }
    return quoted + u'"';
}

Text TableText(const CheckedTable& table) {
    const Text key = u"HKEY_LOCAL_MACHINE\\" + table.Key();
    Text text = u"[-" + key + u"]\r\n\r\n";
    if (!table.Entries().empty()) {
        text += u"[" + key + u"]\r\n";
        for (const ForcedVersionItem& entry : table.Entries()) {
            text +=
                QuotedName(entry.valueName) + u"=dword:" + HexText(static_cast<std::uint32_t>(entry.version)) + u"\r\n";
        }
        text += u"\r\n";
    }
    return text;
}

}  // namespace

std::string RegistryFileOf(const CheckedTable& mainTable, const CheckedTable& reportingTable) {
    const Text text =
        u"\uFEFFWindows Registry Editor Version 5.00\r\n\r\n" + TableText(mainTable) + TableText(reportingTable);
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (const char16_t character : text) {
        bytes += static_cast<char>(character & 0xFF);
        bytes += static_cast<char>(character >> 8);
    }
    return bytes;
}
