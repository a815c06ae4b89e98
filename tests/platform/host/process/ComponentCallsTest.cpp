#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/ComponentCalls.h"

TEST_CASE("An object is created when each step from its identifier to its server's file succeeds") {
    TestMachine machine;
    machine.Environment("PARTS", "C:\\parts");
    FileContent("C:\\parts\\Thing.DLL", "");
    const std::string identifier = "{00000000-1111-2222-3333-444444444444}";
    const std::string server = "CLSID\\" + identifier + "\\InprocServer32";
    struct {
        std::string key;
        RawData data;
        Text failure;
    } const steps[] = {{"Sample.Thing\\CLSID", RawText("{0000}"), u"Ungültige Klassenzeichenfolge"},
                       {"Sample.Thing\\CLSID", RawText(identifier), u"Klasse nicht registriert"},
                       {server, RawText("C:\\parts\\missing.dll"), platform::StatusText(126)},
                       {server, {platform::RegExpandSz, RawText("%PARTS%\\thing.dll").bytes}, platform::StatusText(0)}};
    for (const auto& step : steps) {
        RawValueSet(platform::KeyClassesRoot, step.key, "", step.data);
        platform::ObjectReference object = 1;
        const platform::Status status = platform::CreateObject(u"Sample.Thing", object);
        CHECK(platform::StatusText(status) == step.failure);
        CHECK((object != 0) == (status == platform::StatusSuccess));
    }
}
