// Outside components on the host's machine. None of their code runs here. An object can be created when its
// programmatic identifier leads through the machine's registry to a file on its drive. What a library's function
// returns stands in the file "components" of the machine folder, one function to a line:
//
//     sevDTA30.dll!sevDTA_Init=0
//
// with the library's file name in any case, the function's name exactly, and the result in decimal digits. A library
// has the functions that are listed for it and no others. Any other line is passed over.

#include "platform/ComponentCalls.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <optional>
#include <span>
#include <string_view>

#include "platform/FileCalls.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "platform/RegistryCalls.h"
#include "platform/host/Machine.h"

namespace platform {

namespace {

constexpr Status StatusModuleNotFound = 126;     // ERROR_MOD_NOT_FOUND
constexpr Status StatusProcedureNotFound = 127;  // ERROR_PROC_NOT_FOUND

// Statuses of the component object model. Those of the form 0x8007xxxx carry a status of the system in their low word.
constexpr Status ClassNotRegistered = static_cast<Status>(0x80040154U);  // REGDB_E_CLASSNOTREG
constexpr Status InvalidClassString = static_cast<Status>(0x800401F3U);  // CO_E_CLASSSTRING
constexpr std::uint32_t SystemFacility = 0x80070000U;                    // HRESULT_FROM_WIN32
constexpr Status ServerNotFound = static_cast<Status>(SystemFacility | 126U);

struct StatusDescription {
    Status status;
    const char16_t* text;
};

constexpr std::array<StatusDescription, 23> Descriptions = {{
    {StatusSuccess, u"Der Vorgang wurde erfolgreich beendet."},
    {StatusFileNotFound, u"Das System kann die angegebene Datei nicht finden."},
    {StatusPathNotFound, u"Das System kann den angegebenen Pfad nicht finden."},
    {StatusAccessDenied, u"Zugriff verweigert"},
    {StatusInvalidHandle, u"Das Handle ist ungültig."},
    {8, u"Für diesen Befehl ist nicht genügend Speicher verfügbar."},
    {13, u"Die Daten sind unzulässig."},
    {StatusSharingViolation,
     u"Der Prozess kann nicht auf die Datei zugreifen, da sie von einem anderen Prozess verwendet wird."},
    {StatusFileExists, u"Die Datei ist vorhanden."},
    {StatusInvalidParameter, u"Falscher Parameter."},
    {StatusDiskFull, u"Es steht nicht genug Speicherplatz auf dem Datenträger zur Verfügung."},
    {StatusInvalidName, u"Die Syntax für den Dateinamen, Verzeichnisnamen oder die Datenträgerbezeichnung ist falsch."},
    {StatusModuleNotFound, u"Das angegebene Modul wurde nicht gefunden."},
    {StatusProcedureNotFound, u"Die angegebene Prozedur wurde nicht gefunden."},
    {183, u"Eine Datei kann nicht erstellt werden, wenn sie bereits vorhanden ist."},
    {193, u"%1 ist keine zulässige Win32-Anwendung."},
    {StatusMoreData, u"Es sind mehr Daten verfügbar."},
    {StatusNoMoreItems, u"Es sind keine Daten mehr verfügbar."},
    {StatusKeyDeleted,
     u"Es wurde versucht, einen Registrierungsschlüssel einem unzulässigen Vorgang zu unterziehen, der zum Löschen "
     u"markiert wurde."},
    {StatusIoDevice, u"Die Anforderung konnte wegen eines E/A-Gerätefehlers nicht ausgeführt werden."},
    {1155, u"Der angegebenen Datei ist keine Anwendung zugeordnet."},
    {ClassNotRegistered, u"Klasse nicht registriert"},
    {InvalidClassString, u"Ungültige Klassenzeichenfolge"},
}};

// An expandable text of the registry with its %variables% replaced; a variable that is not set stays as it is written.
std::string Expanded(const std::string& text) {
    std::string expanded;
    std::size_t position = 0;
    for (;;) {
        const std::size_t open = text.find('%', position);
        const std::size_t close = open == std::string::npos ? open : text.find('%', open + 1);
        if (close == std::string::npos) {
            return expanded + text.substr(position);
        }
        const std::string value = GetEnvironmentVariableA(text.substr(open + 1, close - open - 1));
        expanded += text.substr(position, open - position);
        if (value.empty()) {
            expanded += text.substr(open, close - open);
            position = close;
        } else {
            expanded += value;
            position = close + 1;
        }
    }
}

// The unnamed value of the key `path` below the registered classes; nothing when there is no such key, or no text.
std::optional<std::string> ClassesText(const std::string& path) {
    Handle key = 0;
    if (RegOpenKeyExA(KeyClassesRoot, path, 0, KeyQueryValue, key) != StatusSuccess) {
        return {};
    }
    std::string data(1024, '\0');
    std::uint32_t type = 0;
    std::uint32_t size = static_cast<std::uint32_t>(data.size());
    Status status = RegQueryValueExA(key, "", type, data, size);
    if (status == StatusMoreData) {
        data.resize(size);
        status = RegQueryValueExA(key, "", type, data, size);
    }
    RegCloseKey(key);
    if (status != StatusSuccess || (type != RegSz && type != RegExpandSz)) {
        return {};
    }
    data.resize(size);
    data.resize(std::min(data.find('\0'), data.size()));
    return type == RegExpandSz ? Expanded(data) : data;
}

// The written form of a class identifier: "{8-4-4-4-12}" hexadecimal digits.
bool IsClassIdentifier(std::string_view text) {
    constexpr std::string_view form = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
    constexpr std::string_view digits = "0123456789ABCDEFabcdef";
    if (text.size() != form.size()) {
        return false;
    }
    for (std::size_t index = 0; index < form.size(); ++index) {
        const bool fits =
            form[index] == 'x' ? digits.find(text[index]) != std::string_view::npos : text[index] == form[index];
        if (!fits) {
            return false;
        }
    }
    return true;
}

bool EqualWithoutCase(std::string_view left, std::string_view right) {
    const auto lower = [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](char one, char other) { return lower(one) == lower(other); });
}

// The result that a line of the machine's list of functions gives for `function` of the file `library`.
std::optional<std::int32_t> ListedResult(std::string_view line, std::string_view library, std::string_view function) {
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    const std::size_t mark = line.find('!');
    const std::size_t equals = mark == std::string_view::npos ? mark : line.find('=', mark);
    if (equals == std::string_view::npos || !EqualWithoutCase(line.substr(0, mark), library) ||
        line.substr(mark + 1, equals - mark - 1) != function) {
        return {};
    }
    std::int32_t result = 0;
    const char* const end = line.data() + line.size();
    const auto [stop, error] = std::from_chars(line.data() + equals + 1, end, result);
    return error == std::errc() && stop == end ? std::optional(result) : std::nullopt;
}

const char16_t* KnownDescription(Status status) {
    for (const StatusDescription& description : Descriptions) {
        if (description.status == status) {
            return description.text;
        }
    }
    return nullptr;
}

}  // namespace

Status CreateObject(const std::u16string& programmaticIdentifier, ObjectReference& object) {
    object = 0;
    const std::string identifier = AnsiFromText(programmaticIdentifier);
    if (identifier.empty() || identifier.find('\\') != std::string::npos) {
        return InvalidClassString;
    }
    const std::optional<std::string> classIdentifier = ClassesText(identifier + "\\CLSID");
    if (!classIdentifier || !IsClassIdentifier(*classIdentifier)) {
        return InvalidClassString;
    }
    const std::optional<std::string> server = ClassesText("CLSID\\" + *classIdentifier + "\\InprocServer32");
    if (!server || server->empty()) {
        return ClassNotRegistered;
    }
    if (!FileExists(*server)) {
        return ServerNotFound;
    }
    static ObjectReference lastObject = 0;
    object = ++lastObject;
    return StatusSuccess;
}

// Nothing stands behind an object's number.
void ReleaseObject(ObjectReference) {
}

Status CallTextFunction(const std::string& libraryPath, const std::string& function, const std::string&,
                        std::int32_t& result) {
    if (!FileExists(libraryPath)) {
        return StatusModuleNotFound;
    }
    const std::string library = libraryPath.substr(libraryPath.rfind('\\') + 1);
    std::ifstream list(host::MachineFolder() / "components");
    for (std::string line; std::getline(list, line);) {
        if (const std::optional<std::int32_t> listed = ListedResult(line, library, function)) {
            result = *listed;
            return StatusSuccess;
        }
    }
    return StatusProcedureNotFound;
}

std::u16string StatusText(Status status) {
    const std::uint32_t number = static_cast<std::uint32_t>(status);
    const bool wrapped = (number & 0xFFFF0000U) == SystemFacility;
    if (const char16_t* const text = KnownDescription(wrapped ? static_cast<Status>(number & 0xFFFFU) : status)) {
        return text;
    }
    return {};
}

}  // namespace platform
