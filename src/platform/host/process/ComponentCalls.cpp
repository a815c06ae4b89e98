// Components on the host machine. The components' code never runs. An object can be created if the machine's registry
// maps its ProgID to a file on the machine's drive. The file "components" in the machine folder lists the functions of
// all libraries with their decimal results, one per line. Names are case-insensitive:
//
//     sevDTA30.dll!sevDTA_Init=0

#include "platform/ComponentCalls.h"

#include <cstdlib>

#include "platform/FileCalls.h"
#include "platform/Regional.h"
#include "platform/RegistryCalls.h"
#include "platform/host/Machine.h"
#include "platform/host/process/ClassValue.h"
#include "platform/host/registry/RegistryFile.h"

namespace platform {

namespace {

constexpr Status StatusModuleNotFound = 126;     // ERROR_MOD_NOT_FOUND
constexpr Status StatusProcedureNotFound = 127;  // ERROR_PROC_NOT_FOUND

// COM statuses. Those of the form 0x8007xxxx contain a Windows status.
constexpr Status ClassNotRegistered = static_cast<Status>(0x80040154U);  // REGDB_E_CLASSNOTREG
constexpr Status InvalidClassString = static_cast<Status>(0x800401F3U);  // CO_E_CLASSSTRING
constexpr Status ServerNotFound = static_cast<Status>(0x8007007EU);      // HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND)

}  // namespace

Status CreateObject(const std::u16string& progId, ObjectReference& object) {
    std::string clsid;
    std::string server;
    Status status = host::ClassText(AnsiFromText(progId) + "\\CLSID", clsid);
    if (status == StatusSuccess) {
        status = host::ClassText("CLSID\\" + clsid + "\\InprocServer32", server);
    }
    if (status == StatusFileNotFound) {
        status = clsid.empty() ? InvalidClassString : ClassNotRegistered;
    } else if (status == StatusSuccess && !IsFile(server)) {
        status = ServerNotFound;
    }
    object = status == StatusSuccess ? 1 : 0;  // a dummy reference
    return status;
}

void ReleaseObject(ObjectReference /*object*/) noexcept {
}

Status CallTextFunction(const std::string& libraryPath, const std::string& function, const std::string& /*text*/,
                        std::int32_t& result) {
    if (!IsFile(libraryPath)) {
        return StatusModuleNotFound;
    }
    const std::string library = libraryPath.substr(libraryPath.rfind('\\') + 1);
    const std::u16string wanted = TextFromAnsi(library + '!' + function);
    const auto functions = host::NamedValues("components");
    if (const auto found = functions.find(CharUpperW(wanted)); found != functions.end()) {
        result = std::atoi(AnsiFromText(found->second).c_str());
        return StatusSuccess;
    }
    return StatusProcedureNotFound;
}

std::u16string StatusText(Status status) {
    switch (status) {
        case InvalidClassString: return u"Ungültige Klassenzeichenfolge";
        case ClassNotRegistered: return u"Klasse nicht registriert";
        case ServerNotFound: return u"Das angegebene Modul wurde nicht gefunden.";
        default: return host::RegistryStatusText(status);
    }
}

}  // namespace platform
