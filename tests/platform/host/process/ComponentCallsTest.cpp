#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/ComponentCalls.h"

TEST_CASE("An object is created when each step from its identifier to its server's file succeeds") {
    TestMachine machine;
    machine.Environment("PARTS", "C:\\parts");
    const std::string classKey = "CLSID\\{00000000-1111-2222-3333-444444444444}";
    struct {
        std::string key;
        RawData data;
        std::uint32_t status;
    } const steps[] = {
        {"Sample.Other", RawText("another class"), 0x800401F3},
        {"Sample.Thing\\CLSID", RawText("{0000}"), 0x800401F3},
        {"Sample.Thing\\CLSID", RawText(classKey.substr(6)), 0x80040154},
        {classKey, RawText("no server yet"), 0x80040154},
        {classKey + "\\InprocServer32", RawText("C:\\parts\\missing.dll"), 0x8007007E},
        {classKey + "\\InprocServer32", RawText("C:\\parts\\thing.dll"), 0},
        {classKey + "\\InprocServer32", {platform::RegExpandSz, RawText("%PARTS%\\thing.dll").bytes}, 0},
    };
    FileContent("C:\\parts\\Thing.DLL", "");
    for (const auto& step : steps) {
        RawValueSet(platform::KeyClassesRoot, step.key, "", step.data);
        platform::ObjectReference object = 1;
        const platform::Status status = platform::CreateObject(u"Sample.Thing", object);
        CHECK(static_cast<std::uint32_t>(status) == step.status);
        CHECK((object != 0) == (status == platform::StatusSuccess));
        platform::ReleaseObject(object);
    }
    CHECK(platform::StatusText(static_cast<platform::Status>(0x800401F3U)) == u"Ungültige Klassenzeichenfolge");
    CHECK(platform::StatusText(static_cast<platform::Status>(0x8007007EU)) == platform::StatusText(126));
}
