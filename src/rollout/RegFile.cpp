#include "rollout/RegFile.h"

#include "common/modStringLibrary.h"
#include "platform/Bytes.h"

namespace {

// Returns the value name in quotes, with quotes and backslashes escaped by a backslash; "@" for the default entry.
Text QuotedName(const Text& name) {
    return name.empty() ? u"@" : u"\"" + ReplaceAll(ReplaceAll(name, u"\\", u"\\\\"), u"\"", u"\\\"") + u"\"";
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

std::string RegFileBytes(const CheckedTables& tables) {
    Text text = u"\uFEFFWindows Registry Editor Version 5.00\r\n\r\n";
    for (const CheckedTable& table : tables) {
        text += TableText(table);
    }
    std::string bytes;
    for (const char16_t character : text) {
        bytes += platform::BytesFromNumber(character).substr(0, sizeof character);
    }
    return bytes;
}
