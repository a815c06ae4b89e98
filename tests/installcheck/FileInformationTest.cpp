#include <cmath>
#include <cstdint>
#include <variant>

#include "Check.h"
#include "TestMachine.h"
#include "installcheck/modFileData.h"
#include "installcheck/modFileInfo.h"
#include "installcheck/modPathGet.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "samples/SampleImage.h"

TEST_CASE_FIXTURE(TestMachine, "FileExists and FileDateGet ignore folders and paths with a trailing backslash") {
    FileContent(ControlFile(), "text");
    const Text path = platform::TextFromAnsi(ControlFile());
    const Text folder = path.substr(0, path.rfind(u'\\'));
    CHECK(FileExists(path));
    CHECK(std::abs(std::get<Date>(FileDateGet(path)).days - platform::Now()) < 60.0 / 86400);
    for (const Text& none : {Text(), folder, path + u"\\", folder + u"\\missing"}) {
        CHECK_FALSE(FileExists(none));
        CHECK(FileDateGet(none) == Variant(Null{}));
    }
    const FileInfo info = FileInfoGet(path);
    CHECK(info.Name + u" " + info.TypeText + u" " + info.Version == u"vtv4v.txt Unbekannt 0.0.0.0");
}

TEST_CASE_FIXTURE(TestMachine, "FileInfoGet returns the version as signed words and the file type as text") {
    const Text types =
        u"Unbekannt|Anwendung|Dynamic Link Library (DLL)|Geräte Trieber|Schriftart|Virtueller Geräte Treiber||"
        u"Static Library|";
    std::uint32_t fileType = 0;
    for (const Text& type : Split(types, u'|')) {
        const bool wide = fileType % 2 == 0;
        FileContent(ControlFile(),
                    SampleImage({.version = {1, 40000, 65535, 32767}, .fileType = fileType++, .wide = wide}));
        const FileInfo info = FileInfoGet(platform::TextFromAnsi(ControlFile()));
        CHECK(info.Version == u"1.-25536.-1.32767");
        CHECK(info.TypeText == type);
    }
}
