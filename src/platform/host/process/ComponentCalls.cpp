// Outside components on the host's machine. None of their code runs here. An object can be created when its
// programmatic identifier leads through the machine's registry to a file on its drive. What a library's function
// returns stands in the file "components" of the machine folder, one function to a line:
//
//     sevDTA30.dll!sevDTA_Init=0
//
// with the library's file name in any case, the function's name exactly, and the result in decimal digits. A library
// has the functions that are listed for it and no others. Any other line is passed over.

#include "platform/ComponentCalls.h"

#include <array>
#include <charconv>
#include <fstream>
#include <optional>
#include <string_view>

#include "platform/FileCalls.h"
#include "platform/Regional.h"
#include "platform/host/Machine.h"
#include "platform/host/NameOrder.h"
#include "platform/host/Unicode.h"
#include "platform/host/process/ClassText.h"
#include "platform/host/registry/RegistryStatusText.h"

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

// The result that a line of the machine's list of functions gives for `function` of the file `library`.
std::optional<std::int32_t> ListedResult(std::string_view line, std::u16string_view library,
                                         std::string_view function) {
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    const std::size_t mark = line.find('!');
    const std::size_t equals = mark == std::string_view::npos ? mark : line.find('=', mark);
    if (equals == std::string_view::npos || !host::NameEqual()(host::FromUtf8(line.substr(0, mark)), library) ||
        line.substr(mark + 1, equals - mark - 1) != function) {
        return {};
    }
    std::int32_t result = 0;
    const char* const end = line.data() + line.size();
    const auto [stop, error] = std::from_chars(line.data() + equals + 1, end, result);
    return error == std::errc() && stop == end ? std::optional(result) : std::nullopt;
}

}  // namespace

Status CreateObject(const std::u16string& programmaticIdentifier, ObjectReference& object) {
    object = 0;
    const std::string identifier = AnsiFromText(programmaticIdentifier);
    if (identifier.empty() || identifier.find('\\') != std::string::npos) {
        return InvalidClassString;
    }
    const host::ClassText classIdentifier(identifier + "\\CLSID");
    if (classIdentifier.Result() != StatusSuccess || !IsClassIdentifier(classIdentifier.Text())) {
        return InvalidClassString;
    }
    const host::ClassText server("CLSID\\" + classIdentifier.Text() + "\\InprocServer32");
    if (server.Result() != StatusSuccess || server.Text().empty()) {
        return ClassNotRegistered;
    }
    if (!FileExists(server.Text())) {
        return ServerNotFound;
    }
    static ObjectReference lastObject = 0;
    object = ++lastObject;
    return StatusSuccess;
}

void ReleaseObject(ObjectReference) noexcept {
    // Nothing stands behind an object's number.
}

Status CallTextFunction(const std::string& libraryPath, const std::string& function, const std::string&,
                        std::int32_t& result) {
    if (!FileExists(libraryPath)) {
        return StatusModuleNotFound;
    }
    const std::u16string library = TextFromAnsi(libraryPath.substr(libraryPath.rfind('\\') + 1));
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
    const auto number = static_cast<std::uint32_t>(status);
    const bool wrapped = (number & 0xFFFF0000U) == SystemFacility;
    const Status told = wrapped ? static_cast<Status>(number & 0xFFFFU) : status;
    if (std::u16string text = host::RegistryStatusText(told); !text.empty()) {
        return text;
    }
    for (const StatusDescription& description : Descriptions) {
        if (description.status == told) {
            return description.text;
        }
    }
    return {};
}

}  // namespace platform
