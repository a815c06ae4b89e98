#include "platform/host/registry/RegFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "platform/RegistryCalls.h"
#include "platform/host/Unicode.h"

namespace platform::host {

namespace {

constexpr std::string_view FirstLine = "Windows Registry Editor Version 5.00";
constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view Blanks = " \t\r\n";
constexpr auto None = std::string_view::npos;

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(Blanks);
    return first == None ? std::string_view() : text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

// Nothing for what is no text.
std::optional<std::u16string> TextFromUtf8(std::string_view bytes) {
    std::u16string text = FromUtf8(bytes);
    if (text.find(u'\xFFFD') != std::u16string::npos && ToUtf8(text) != bytes) {
        return {};
    }
    return text;
}

// True for what may stand behind an entry in its line: nothing but blanks and a comment.
bool IsRemark(std::string_view rest) {
    const std::string_view remark = Trimmed(rest);
    return remark.empty() || remark.front() == ';';
}

// The place of the first quotation mark from `start` on that no backslash escapes.
std::size_t QuoteAt(std::string_view text, std::size_t start) {
    while ((start = text.find_first_of("\"\\", start)) != None && text[start] == '\\') {
        start += 2;
    }
    return start;
}

// A value's line: its name as written (between the quotation marks, nothing for "@") and what stands behind the "=".
struct ValueLine {
    std::string_view name;
    std::string_view data;
};

std::optional<ValueLine> ValueLineOf(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (line.empty() || (line.front() != '"' && line.front() != '@')) {
        return {};
    }
    const std::size_t nameEnd = line.front() == '@' ? 0 : QuoteAt(line, 1);
    if (nameEnd == None) {
        return {};
    }
    const std::size_t equals = line.find_first_not_of(" \t", nameEnd + 1);
    if (equals == None || line[equals] != '=') {
        return {};
    }
    const std::size_t data = std::min(line.find_first_not_of(" \t", equals + 1), line.size());
    return ValueLine{nameEnd == 0 ? std::string_view() : line.substr(1, nameEnd - 1), line.substr(data)};
}

bool BeginsEntry(std::string_view line) {
    return line.starts_with("[HKEY_") || line.starts_with("[-HKEY_") || ValueLineOf(line).has_value();
}

// The end of the entry whose text goes on behind its first line, as the editor's own exports write a text that holds
// line ends: with the line of the closing quotation mark, or with the first line when none comes before another entry.
std::size_t FurtherTextEnd(std::string_view text, std::size_t firstEnd) {
    for (std::size_t start = firstEnd; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size() - 1) + 1;
        const std::string_view line = text.substr(start, end - start);
        if (BeginsEntry(line)) {
            break;
        }
        if (const std::size_t quote = QuoteAt(line, 0); quote != None) {
            return IsRemark(line.substr(quote + 1)) ? end : firstEnd;
        }
        start = end;
    }
    return firstEnd;
}

// The end of the entry whose bytes go on behind its first line; None when its last line has not come yet.
std::size_t FurtherBytesEnd(std::string_view text, std::size_t firstEnd) {
    std::size_t start = 0;
    std::size_t end = firstEnd;
    while (Trimmed(text.substr(start, end - start)).ends_with('\\')) {
        const std::size_t lineEnd = text.find('\n', end);
        const std::string_view line = text.substr(end, lineEnd == None ? None : lineEnd + 1 - end);
        if (line.find_first_not_of("0123456789abcdefABCDEF,\\ \t\r\n") != None) {
            return firstEnd;
        }
        if (lineEnd == None) {
            return None;
        }
        start = end;
        end = lineEnd + 1;
    }
    return end;
}

// The end of the entry that `text` begins with, its line end included; None when it is unfinished.
std::size_t EntryEnd(std::string_view text) {
    const std::size_t lineEnd = text.find('\n');
    if (lineEnd == None) {
        return None;
    }
    const std::optional<ValueLine> value = ValueLineOf(text.substr(0, lineEnd));
    if (value && value->data.starts_with('"') && QuoteAt(value->data, 1) == None) {
        return FurtherTextEnd(text, lineEnd + 1);
    }
    if (value && value->data.starts_with("hex")) {
        return FurtherBytesEnd(text, lineEnd + 1);
    }
    return lineEnd + 1;
}

// True for a value that no further character could change: it misses its line end alone. A head or a row of bytes may
// have been cut short and still look whole.
bool MissesLineEndAlone(std::string_view line) {
    constexpr std::size_t dwordLength = std::string_view("dword:00000000").size();
    const std::optional<ValueLine> value = ValueLineOf(line);
    if (!value) {
        return false;
    }
    const std::string_view data = Trimmed(value->data);
    return data == "-" || (data.starts_with('"') && QuoteAt(data, 1) == data.size() - 1 && data.size() > 1) ||
           (data.starts_with("dword:") && data.size() == dwordLength);
}

// The text that stands between quotation marks; nothing when it cannot be one.
std::optional<std::u16string> Unquoted(std::string_view quoted) {
    if (quoted.find('\0') != None) {
        return {};
    }
    if (quoted.find('\\') == None) {
        return TextFromUtf8(quoted);
    }
    std::string plain;
    plain.reserve(quoted.size());
    for (std::size_t at = 0; at < quoted.size(); ++at) {
        if (quoted[at] != '\\') {
            plain += quoted[at];
            continue;
        }
        ++at;
        const char escaped = at < quoted.size() ? quoted[at] : '\0';
        if (escaped != '\\' && escaped != '"' && escaped != 'n' && escaped != 'r') {
            return {};
        }
        plain += escaped == 'n' ? '\n' : escaped == 'r' ? '\r' : escaped;
    }
    return TextFromUtf8(plain);
}

void AppendQuoted(std::string& line, std::u16string_view text) {
    line += '"';
    for (const char character : ToUtf8(text)) {
        if (character == '\n' || character == '\r') {
            line += character == '\n' ? "\\n" : "\\r";
            continue;
        }
        if (character == '\\' || character == '"') {
            line += '\\';
        }
        line += character;
    }
    line += '"';
}

void AppendCharacter(std::string& data, char16_t character) {
    data += static_cast<char>(character & 0xFF);
    data += static_cast<char>(character >> 8);
}

// The number of up to `most` hexadecimal digits that `text` begins with; they are taken off it.
std::optional<std::uint32_t> HexTaken(std::string_view& text, std::size_t most) {
    std::uint32_t number = 0;
    const char* const end = text.data() + std::min(most, text.size());
    const std::from_chars_result result = std::from_chars(text.data(), end, number, 16);
    if (result.ec != std::errc()) {
        return {};
    }
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return number;
}

std::optional<RegistryValue> QuotedValue(std::string_view data) {
    const std::size_t end = QuoteAt(data, 1);
    if (end == None || !IsRemark(data.substr(end + 1))) {
        return {};
    }
    const std::optional<std::u16string> text = Unquoted(data.substr(1, end - 1));
    if (!text) {
        return {};
    }
    RegistryValue value{RegSz, {}};
    value.data.reserve(2 * text->size() + 2);
    for (const char16_t character : *text) {
        AppendCharacter(value.data, character);
    }
    AppendCharacter(value.data, u'\0');
    return value;
}

std::optional<RegistryValue> DwordValue(std::string_view digits) {
    std::optional<std::uint32_t> number = HexTaken(digits, 8);
    if (!number || !IsRemark(digits)) {
        return {};
    }
    RegistryValue value{RegDword, {}};
    for (int byte = 0; byte < 4; ++byte, *number >>= 8) {
        value.data += static_cast<char>(*number & 0xFF);
    }
    return value;
}

// The bytes of "01,02,\" with its further lines.
std::optional<std::string> BytesOf(std::string_view text) {
    std::string bytes;
    const auto skipBlanks = [&text] { text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n\\"), text.size())); };
    skipBlanks();
    while (!IsRemark(text)) {
        const std::optional<std::uint32_t> byte = HexTaken(text, 2);
        if (!byte) {
            return {};
        }
        bytes += static_cast<char>(*byte);
        skipBlanks();
        if (IsRemark(text)) {
            break;
        }
        if (text.front() != ',') {
            return {};
        }
        text.remove_prefix(1);
        skipBlanks();
        if (IsRemark(text)) {
            return {};
        }
    }
    return bytes;
}

// The value of "hex:..." and "hex(7):...", without the "hex".
std::optional<RegistryValue> HexValue(std::string_view data) {
    std::optional<std::uint32_t> type = RegBinary;
    if (data.starts_with('(')) {
        data.remove_prefix(1);
        type = HexTaken(data, 8);
        if (!type || !data.starts_with(')')) {
            return {};
        }
        data.remove_prefix(1);
    }
    if (!data.starts_with(':')) {
        return {};
    }
    std::optional<std::string> bytes = BytesOf(data.substr(1));
    if (!bytes) {
        return {};
    }
    return RegistryValue{*type, std::move(*bytes)};
}

std::optional<RegistryValue> ValueOf(std::string_view data) {
    constexpr std::string_view dword = "dword:";
    constexpr std::string_view hex = "hex";
    if (data.starts_with('"')) {
        return QuotedValue(data);
    }
    if (data.starts_with(dword)) {
        return DwordValue(data.substr(dword.size()));
    }
    return data.starts_with(hex) ? HexValue(data.substr(hex.size())) : std::nullopt;
}

// The text of a value that can stand between quotation marks: ended by its one terminator, without line ends, and
// sound.
std::optional<std::u16string> QuotableText(const RegistryValue& value) {
    if (value.type != RegSz || value.data.size() < 2 || value.data.size() % 2 != 0) {
        return {};
    }
    std::u16string text;
    text.reserve(value.data.size() / 2);
    for (std::size_t at = 0; at < value.data.size(); at += 2) {
        text += static_cast<char16_t>(static_cast<std::uint8_t>(value.data[at]) |
                                      static_cast<std::uint8_t>(value.data[at + 1]) << 8);
    }
    if (text.find_first_of(std::u16string_view(u"\0\r\n", 3)) != text.size() - 1 || text.back() != u'\0') {
        return {};
    }
    text.pop_back();
    const bool sound =
        std::none_of(text.begin(), text.end(), [](char16_t unit) { return (unit & 0xF800) == 0xD800; }) ||
        FromUtf8(ToUtf8(text)) == text;
    return sound ? std::optional(std::move(text)) : std::nullopt;
}

void AppendHex(std::string& line, std::uint32_t number, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
        line += "0123456789abcdef"[number >> shift & 0xF];
    }
}

// In lines of at most 80 characters but for a longer name, as the editor's own exports are.
void AppendBytes(std::string& line, const RegistryValue& value) {
    constexpr std::size_t width = 80;
    std::size_t start = 0;
    line += "hex";
    if (value.type != RegBinary) {
        std::array<char, 8> type{};
        line += '(';
        line.append(type.data(), std::to_chars(type.data(), type.data() + type.size(), value.type, 16).ptr);
        line += ')';
    }
    line += ':';
    for (std::size_t at = 0; at < value.data.size(); ++at) {
        if (at > 0 && line.size() - start + 4 > width) {
            line.append("\\").append(LineEnd).append("  ");
            start = line.size() - 2;
        }
        AppendHex(line, static_cast<std::uint8_t>(value.data[at]), 2);
        if (at + 1 < value.data.size()) {
            line += ',';
        }
    }
}

void AppendName(std::string& line, std::u16string_view name) {
    if (name.empty()) {
        line += '@';
    } else {
        AppendQuoted(line, name);
    }
    line += '=';
}

std::string Head(std::string_view opening, std::u16string_view rootName, std::u16string_view path) {
    std::string head = std::string(LineEnd).append(opening) + ToUtf8(rootName);
    if (!path.empty()) {
        head += '\\' + ToUtf8(path);
    }
    return head.append("]").append(LineEnd);
}

void WriteKey(const RegistryKey& key, std::u16string_view rootName, std::u16string_view path,
              const std::function<void(std::string_view)>& sink) {
    // A key with subkeys alone is made by their heads.
    if (key.ValueCount() > 0 || (key.SubKeyCount() == 0 && !path.empty())) {
        sink(RegFileHead(rootName, path));
    }
    for (std::size_t index = 0; index < key.ValueCount(); ++index) {
        const RegistryKey::NamedValue& value = *key.ValueAt(index);
        sink(RegFileValue(value.first, value.second));
    }
    for (std::size_t index = 0; index < key.SubKeyCount(); ++index) {
        const RegistryKey::Pointer subKey = key.SubKeyAt(index);
        WriteKey(*subKey, rootName, path.empty() ? subKey->Name() : std::u16string(path) + u'\\' + subKey->Name(),
                 sink);
    }
}

}  // namespace

std::size_t RegFileReader::Read(std::string_view text, bool atEnd) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::string_view rest = text.substr(at);
        std::size_t end = EntryEnd(rest);
        if (end == None) {
            if (!atEnd || !MissesLineEndAlone(rest)) {
                break;
            }
            end = rest.size();
        }
        ReadEntry(rest.substr(0, end));
        at += end;
    }
    return at;
}

void RegFileReader::MoveTo(RegistryKey::Pointer root) {
    if (const RegistryKey::Pointer section = section_.lock()) {
        section_ = KeyAt(root, section->Path());
    }
    root_ = std::move(root);
}

void RegFileReader::ReadEntry(std::string_view entry) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (entry.starts_with(byteOrderMark)) {
        entry.remove_prefix(byteOrderMark.size());
    }
    entry = Trimmed(entry);
    if (IsRemark(entry) || entry == FirstLine) {
        return;
    }
    if (entry.front() == '[') {
        section_.reset();
        passedOver_ |= !ReadHead(entry);
    } else {
        passedOver_ |= !ReadValue(entry);
    }
}

bool RegFileReader::ReadHead(std::string_view head) {
    const std::size_t close = head.rfind(']');
    if (close == None || !IsRemark(head.substr(close + 1)) || head.find('\0') != None) {
        return false;
    }
    const bool deleted = head.starts_with("[-");
    const std::size_t start = deleted ? 2 : 1;
    const std::optional<std::u16string> path = TextFromUtf8(head.substr(start, std::max(close, start) - start));
    if (!path) {
        return false;
    }
    const std::size_t rootEnd = std::min(path->find(u'\\'), path->size());
    const auto root = std::find_if(roots_.begin(), roots_.end(), [&](const RegFileRoot& candidate) {
        return NameEqual()(candidate.name, std::u16string_view(*path).substr(0, rootEnd));
    });
    if (root == roots_.end()) {
        return false;
    }
    const std::u16string below = path->substr(rootEnd);
    const std::u16string whole = root->path + below;
    const std::vector<std::u16string_view> levels = PathLevels(whole);
    if (levels.size() > DeepestKey || std::any_of(levels.begin(), levels.end(), [](std::u16string_view level) {
            return level.size() > LongestKeyName;
        })) {
        return false;
    }
    if (!deleted) {
        section_ = KeyMade(root_, whole);
        return true;
    }
    if (PathLevels(below).empty()) {  // a root cannot be deleted
        return false;
    }
    if (const RegistryKey::Pointer key = KeyAt(root_, whole)) {
        key->Parent()->DeleteSubKey(key->Name());
    }
    return true;
}

bool RegFileReader::ReadValue(std::string_view entry) {
    const RegistryKey::Pointer section = section_.lock();
    const std::optional<ValueLine> line = ValueLineOf(entry);
    if (section == nullptr || !line) {
        return false;
    }
    const std::optional<std::u16string> name = Unquoted(line->name);
    if (!name || name->size() > LongestValueName) {
        return false;
    }
    if (line->data.starts_with('-') && IsRemark(line->data.substr(1))) {
        section->DeleteValue(*name);
        return true;
    }
    std::optional<RegistryValue> value = ValueOf(line->data);
    if (value) {
        section->Value(*name, std::move(*value));
    }
    return value.has_value();
}

std::optional<std::string> TextOfUtf16File(std::string_view bytes) {
    const bool lowFirst = bytes.starts_with("\xFF\xFE");
    if (!lowFirst && !bytes.starts_with("\xFE\xFF")) {
        return {};
    }
    std::u16string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
        const auto first = static_cast<std::uint8_t>(bytes[at]);
        const auto second = static_cast<std::uint8_t>(bytes[at + 1]);
        text += static_cast<char16_t>(lowFirst ? first | second << 8 : first << 8 | second);
    }
    return ToUtf8(text);
}

std::string RegFileFirstLines() {
    return std::string(FirstLine).append(LineEnd);
}

std::string RegFileHead(std::u16string_view rootName, std::u16string_view path) {
    return Head("[", rootName, path);
}

std::string RegFileDeletedHead(std::u16string_view rootName, std::u16string_view path) {
    return Head("[-", rootName, path);
}

std::string RegFileValue(std::u16string_view name, const RegistryValue& value) {
    std::string line;
    AppendName(line, name);
    if (const std::optional<std::u16string> text = QuotableText(value)) {
        AppendQuoted(line, *text);
    } else if (value.type == RegDword && value.data.size() == 4) {
        line += "dword:";
        for (std::size_t byte = value.data.size(); byte > 0; --byte) {
            AppendHex(line, static_cast<std::uint8_t>(value.data[byte - 1]), 2);
        }
    } else {
        AppendBytes(line, value);
    }
    return line.append(LineEnd);
}

std::string RegFileDeletedValue(std::u16string_view name) {
    std::string line;
    AppendName(line, name);
    return line.append("-").append(LineEnd);
}

void WriteRegFile(const RegistryKey& root, std::u16string_view rootName,
                  const std::function<void(std::string_view)>& sink) {
    sink(RegFileFirstLines());
    WriteKey(root, rootName, {}, sink);
}

}  // namespace platform::host
