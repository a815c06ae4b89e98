
#include "Check.h"
#include "ProductEntries.h"
#include "TestMachine.h"
#include "products/Installer.h"

namespace {

// The GUIDs in the list that are the cases' own; a machine may have other products.
std::vector<Text> OwnGUIs(const Installer& installer) {
    std::vector<Text> guis;
    for (std::int32_t index = 1; index <= installer.Count(); ++index) {
        if (const Text gui = installer.GUIs(index); gui.starts_with(u"VT-")) {
            guis.push_back(gui);
        }
    }
    return guis;
}

}  // namespace

TEST_CASE("A lookup fills the record with the first product that matches whole, or empties it") {
    const TestMachine machine;
    ProductEntries products;
    products.Add("VT1", "Vandrel Test", "no braces", RawNumber(1), "C:\\A1");
    products.Add("VT2", "Vandrel Test", "{VT-2} {a}", RawNumber(2), "C:\\A2\\");
    products.Add("VT3", "Vandrel Test", "MsiExec.exe /X{VT-3}", RawNumber(3), "C:\\A3\\");
    Installer installer;
    for (const Text& missing : {Text(u"vandrel Test"), Text(u"Vandrel Test "), Text(u"VT-2"), Text()}) {
        installer.DisplayName(u"Vandrel Test");
        CHECK(installer.GUIdeco() == u"{VT-2}");
        CHECK(installer.InstallLocation() == u"C:\\A2\\");
        installer.DisplayName(missing);
        CHECK_FALSE(installer.IsInstalled());
        CHECK(installer.InstallLocation().empty());
    }
    installer.GUI(u"VT-3");
    products.Add("VT3", "Vandrel Test renamed", "{VT-3}", RawNumber(4));
    installer.ReScan();
    CHECK(installer.DisplayName() == u"Vandrel Test renamed");
    CHECK(installer.Version() == 4);
    products.Clear();
    installer.ReScan();
    CHECK(installer.GUIdeco() == u"{}");
    CHECK(LastError().Number() == 0);
    for (const auto& [unInstallString, gui] :
         {std::pair<std::string, Text>{"a}b", u"a"}, {"setup {a", u""}, {"{}", u""}}) {
        products.Add("VT", "Vandrel Test", unInstallString);
        installer.DisplayName(u"Vandrel Test");
        CHECK(installer.GUI() == gui);
    }
}

TEST_CASE("The list holds one key's products, lives apart from lookups, and stores 1000") {
    const TestMachine machine;
    ProductEntries products;
    products.Add("VT1", "Vandrel Test", "x {VT-1}", RawNumber(0x0408003F), "C:\\A");
    products.Add("VT2", "Vandrel Test", "no braces");
    products.Add("VT3", "", "{VT-3}");
    products.Add("VT4", "Vandrel Test B", "{VT-4}");
    products.Add("VT5", "Vandrel Test U", "{VT-5}", {}, {}, true);
    Installer installer;
    installer.List(true);
    CHECK(OwnGUIs(installer) == std::vector<Text>{u"VT-5"});
    installer.List(false);
    installer.GUI(u"VT-5");
    CHECK_FALSE(installer.IsInstalled());
    installer.GUI(u"VT-4");
    CHECK(OwnGUIs(installer) == std::vector<Text>{u"VT-1", u"VT-4"});

    std::int32_t index = 1;
    while (installer.GUIs(index) != u"VT-1") {
        REQUIRE(++index <= installer.Count());
    }
    CHECK(installer.UnInstallStrings(index) == u"x {VT-1}");
    CHECK(installer.InstallLocations(index) == u"C:\\A");
    CHECK(installer.DisplayVersions(index, true) == u"04.08.063");
    CHECK(installer.DisplayName() == u"Vandrel Test B");
    for (const std::int32_t outside : {0, installer.Count() + 1}) {
        CHECK(installer.DisplayNames(outside).empty());
        CHECK(installer.DisplayVersions(outside).empty());
    }

    for (int number = 0; number < 1001; ++number) {
        products.Add("VU" + std::to_string(number), "Vandrel Test", "{VT-}");
    }
    installer.List(false);
    CHECK_FALSE(installer.DisplayNames(1000).empty());
    CHECK(RaisedBy([&] { return installer.DisplayNames(1001); }).number == 9);
    CHECK(installer.Versions(installer.Count() + 1) == 0);
}

TEST_CASE("A version is cut into its fields and shown in four forms") {
    const TestMachine machine;
    struct {
        RawData stored;
        std::int16_t major, minor, revision;
        Text plain, fancy, noPoints, both;
    } const cases[] = {{RawNumber(0x0408003F), 4, 8, 63, u"4.08.063", u"04.08.063", u"408063", u"0408063"},
                       {RawNumber(0x01000258), 1, 0, 88, u"1.00.088", u"01.00.088", u"100088", u"0100088"},
                       {RawNumber(0x7B7B0000), 123, 123, 0, u"123.23.000", u"23.23.000", u"12323000", u"2323000"},
                       {RawText("-16777217"), -2, 255, -1, u"-2.55.0-1", u"-2.55.0-1", u"-2550-1", u"-2550-1"},
                       {RawNumber(0x80000000U), 0, 0, 0, u"", u"", u"", u""}};
    for (const auto& each : cases) {
        ProductEntries products;
        products.Add("VT", "Vandrel Test", "{VT-}", each.stored, "C:\\T");
        Installer installer;
        installer.DisplayName(u"Vandrel Test");
        CHECK(installer.VersionMajor() == each.major);
        CHECK(installer.VersionMinor() == each.minor);
        CHECK(installer.VersionRevision() == each.revision);
        CHECK(installer.DisplayVersion() == each.plain);
        CHECK(installer.DisplayVersion(true) == each.fancy);
        CHECK(installer.DisplayVersion(false, true) == each.noPoints);
        CHECK(installer.DisplayVersion(true, true) == each.both);
        CHECK(installer.InstallLocation() == u"C:\\T");
    }
}
