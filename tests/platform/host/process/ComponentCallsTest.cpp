#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/ComponentCalls.h"

TEST_CASE("An object is created when each step from its identifier to its server's file succeeds") {
    const TestMachine machine;
    FileContent("C:\\parts\\Thing.DLL", "");
    const std::string server = "CLSID\\{0000}\\InprocServer32";
    struct {
        std::string key, text;
        Text failure;
    } const steps[] = {{"Sample.Other", "", u"Ungültige Klassenzeichenfolge"},
                       {"Sample.Thing\\CLSID", "{0000}", u"Klasse nicht registriert"},
                       {server, "C:\\parts\\missing.dll", u"Das angegebene Modul wurde nicht gefunden."},
                       {server, "C:\\parts\\thing.dll", u""}};
    for (const auto& step : steps) {
        RawValueSet(platform::KeyClassesRoot, step.key, "", RawText(step.text));
        platform::ObjectReference object = 1;
        const platform::Status status = platform::CreateObject(u"Sample.Thing", object);
        CHECK(platform::StatusText(status) == step.failure);
        CHECK((object != 0) == (status == platform::StatusSuccess));
    }
}
