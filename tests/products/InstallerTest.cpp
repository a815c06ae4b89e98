#include "Check.h"
#include "RawRegistry.h"
#include "TestMachine.h"
#include "products/Installer.h"

namespace {

struct InstallerFixture : TestMachine {
    Text ListedProducts() {
        Text listed;
        for (std::int32_t index = 1; index <= installer.Count(); ++index) {
            listed += installer.GUIs(index) + u"," + installer.DisplayNames(index) + u"," +
                      installer.UnInstallStrings(index) + u"," + installer.InstallLocations(index) + u"," +
                      installer.DisplayVersions(index, true) + u";";
        }
        return listed;
    }

    Installer installer;
};

}  // namespace

TEST_CASE_FIXTURE(InstallerFixture, "A lookup fills the record with the first exact match, or clears the record") {
    RawProductAdd("VT1", "Vandrel Test", "no braces", RawNumber(1), "C:\\A1");
    RawProductAdd("VT2", "Vandrel Test", "{VT-2} {a}", RawNumber(2), "C:\\A2\\");
    RawProductAdd("VT3", "Vandrel Test", "MsiExec.exe /X{VT-3}", RawNumber(3), "C:\\A3\\");
    for (const Text& missing : {Text(u"vandrel Test"), Text(u"Vandrel Test "), Text(u"VT-2"), Text()}) {
        installer.DisplayName(u"Vandrel Test");
        CHECK(installer.GUIdeco() == u"{VT-2}");
        CHECK(installer.InstallLocation() == u"C:\\A2\\");
        installer.DisplayName(missing);
        CHECK_FALSE(installer.IsInstalled());
        CHECK(installer.InstallLocation().empty());
    }
    installer.GUI(u"VT-3");
    RawProductAdd("VT3", "Vandrel Test renamed", "{VT-3}", RawNumber(4));
    installer.ReScan();
    CHECK(installer.DisplayName() == u"Vandrel Test renamed");
    RawProductAdd("VT3", "", "{VT-3}");
    installer.ReScan();
    CHECK(installer.GUIdeco() == u"{}");
    for (const auto& [unInstallString, gui] :
         {std::pair<std::string, Text>{"a}b", u"a"}, {"setup {a", u""}, {"{}", u""}}) {
        RawProductAdd("VT", "Vandrel Other", unInstallString);
        installer.DisplayName(u"Vandrel Other");
        CHECK(installer.GUI() == gui);
    }
}

TEST_CASE_FIXTURE(InstallerFixture, "The list holds up to 1000 products per key; lookups leave the list unchanged") {
    RawProductAdd("VT1", "Vandrel Test", "x {VT-1}", RawNumber(0x0408003F), "C:\\A");
    RawProductAdd("VT2", "Vandrel Test", "no braces");
    RawProductAdd("VT3", "", "{VT-3}");
    RawProductAdd("VT4", "Vandrel Test B", "{VT-4}");
    const std::string key =
        "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Installer\\UserData\\S-1-5-18\\Products\\VT5\\InstallProperties";
    RawValueSet(platform::KeyLocalMachine, key, "DisplayName", RawText("Vandrel Test U"));
    RawValueSet(platform::KeyLocalMachine, key, "UninstallString", RawText("{VT-5}"));
    CHECK(installer.Count() == 0);
    installer.List(true);
    CHECK(ListedProducts() == u"VT-5,Vandrel Test U,{VT-5},,;");
    installer.List(false);
    CHECK(installer.DisplayVersions(1) == u"4.08.063");
    installer.GUI(u"VT-5");
    CHECK_FALSE(installer.IsInstalled());
    installer.GUI(u"VT-4");
    CHECK(ListedProducts() == u"VT-1,Vandrel Test,x {VT-1},C:\\A,04.08.063;VT-4,Vandrel Test B,{VT-4},,00.00.001;");
    CHECK(installer.Version() == installer.Versions(installer.Count()));  // copied to the record by DisplayVersions
    CHECK(installer.DisplayName() == u"Vandrel Test B");
    for (const std::int32_t outside : {0, installer.Count() + 1}) {
        CHECK(installer.DisplayNames(outside).empty());
        CHECK(installer.DisplayVersions(outside).empty());
    }
    for (int number = 0; number < 1001; ++number) {
        RawProductAdd("VU" + std::to_string(number), "Vandrel Test", "{VT-}");
    }
    installer.List(false);
    CHECK_FALSE(installer.DisplayNames(1000).empty());
    CHECK(RaisedBy([&] { return installer.DisplayNames(1001); }).number == 9);
}

TEST_CASE_FIXTURE(InstallerFixture, "DisplayVersion shows the fields with and without leading zeros and dots") {
    const std::pair<RawData, Text> cases[] = {{RawNumber(0x01000258), u"1.00.088 01.00.088 100088"},
                                              {RawNumber(0x7B7B0000), u"123.23.000 23.23.000 12323000"},
                                              {RawText("-16777217"), u"-2.55.0-1 -2.55.0-1 -2550-1"},
                                              {RawNumber(0x80000000U), u"  "}};
    for (const auto& [version, shown] : cases) {
        RawProductAdd("VT", "Vandrel Test", "{VT-}", version, "C:\\T");
        installer.DisplayName(u"Vandrel Test");
        CHECK(installer.DisplayVersion() + u" " + installer.DisplayVersion(true) + u" " +
                  installer.DisplayVersion(false, true) ==
              shown);
        CHECK(installer.InstallLocation() == u"C:\\T");
    }
}
