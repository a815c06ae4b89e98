#include <doctest/doctest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <string>
#include <vector>

#include "platform/RegistryCalls.h"
#include "platform/host/RegistryFolder.h"
#include "platform/host/RegistryJournal.h"

using namespace platform;
using namespace platform::host;

namespace {

RegistryValue Number(std::uint8_t number) {
    return {RegDword, {static_cast<char>(number), 0, 0, 0}};
}

Status Set(RegistryJournal& journal, std::u16string_view path, std::u16string_view name, const RegistryValue& value) {
    return journal.Append([&](std::string& fragment) {
        const RegistryKey::Pointer key = KeyAt(journal.Root(), path);
        fragment = key == nullptr ? journal.MadeKey(path) : journal.HeadFor(key);
        fragment += RegFileValue(name, value);
        return StatusSuccess;
    });
}

Status DeleteKey(RegistryJournal& journal, std::u16string_view path) {
    return journal.Append([&](std::string& fragment) {
        fragment = journal.DeletedKey(*KeyAt(journal.Root(), path));
        return StatusSuccess;
    });
}

std::string DumpOf(const std::filesystem::path& file) {
    RegistryJournal journal = JournalOf(file);
    REQUIRE(journal.CatchUp() == StatusSuccess);
    return Dump(*journal.Root());
}

Handle OpenedTable(const std::string& path) {
    Handle key = 0;
    std::uint32_t disposition = 0;
    RegCreateKeyExA(KeyLocalMachine, path, "", 0, KeyQueryValue | KeySetValue, key, disposition);
    return key;
}

// Runs `steps` in a process of its own and returns its number; the process ends by itself or is killed.
template <typename Steps>
pid_t Started(Steps&& steps) {
    const pid_t process = fork();
    if (process == 0) {
        steps();
        _exit(0);
    }
    REQUIRE(process > 0);
    return process;
}

}  // namespace

TEST_CASE("A file cut at any byte holds all changes but the one it is cut in, and takes the next one") {
    const RegistryFolder folder;
    RegistryJournal journal = JournalOf(folder.MachineFile());
    std::vector<std::string> states = {Dump(*journal.Root())};
    std::vector<std::size_t> sizes = {0};
    const auto changed = [&](Status status) {
        REQUIRE(status == StatusSuccess);
        states.push_back(Dump(*journal.Root()));
        sizes.push_back(folder.MachineText().size());
    };
    changed(Set(journal, u"other", u"witness", Number(9)));
    changed(Set(journal, u"table", u"hugo", Number(1)));
    changed(Set(journal, u"table", u"hugo", Number(2)));
    changed(Set(journal, u"table", u"", {RegBinary, std::string(40, '\x5A')}));
    changed(Set(journal, u"table", u"text\"\\", {RegSz, std::string("\\\0\"\0\0\0", 6)}));
    changed(Set(journal, u"other", u"line", {RegSz, std::string("\n\0\0\0", 4)}));
    changed(DeleteKey(journal, u"table"));

    const std::string whole = folder.MachineText();
    std::size_t change = 0;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        CAPTURE(size);
        change += change + 1 < sizes.size() && size >= sizes[change + 1] ? 1 : 0;
        folder.MachineText(whole.substr(0, size));
        const std::string read = DumpOf(folder.MachineFile());
        // The key of a new table may be there before its value, and a value before its line end.
        const bool keyAlone =
            read == states[change] + "\r\n[HKEY_LOCAL_MACHINE\\table]\r\n" ||
            (change == 0 && read == std::string(RegFirstLine) + "\r\n[HKEY_LOCAL_MACHINE\\other]\r\n");
        const bool lineEndMissing =
            change + 1 < sizes.size() && sizes[change + 1] - size <= 2 && read == states[change + 1];
        CHECK((read == states[change] || keyAlone || lineEndMissing));

        RegistryJournal next = JournalOf(folder.MachineFile());
        REQUIRE(Set(next, u"zz", u"next", Number(7)) == StatusSuccess);
        CHECK(DumpOf(folder.MachineFile()) == read + "\r\n[HKEY_LOCAL_MACHINE\\zz]\r\n\"next\"=dword:00000007\r\n");
    }
}

TEST_CASE("Each journal sees what another one wrote, whether appended, rewritten, replaced or removed") {
    const RegistryFolder folder;
    RegistryJournal one = JournalOf(folder.MachineFile());
    RegistryJournal other = JournalOf(folder.MachineFile());
    const auto agree = [&] {
        return one.CatchUp() == StatusSuccess && other.CatchUp() == StatusSuccess &&
               Dump(*one.Root()) == Dump(*other.Root()) && Dump(*one.Root()) == DumpOf(folder.MachineFile());
    };
    REQUIRE(Set(one, u"a", u"n", Number(1)) == StatusSuccess);
    REQUIRE(Set(other, u"a", u"m", Number(2)) == StatusSuccess);
    REQUIRE(Set(one, u"b", u"n", Number(3)) == StatusSuccess);
    CHECK(agree());
    REQUIRE(Set(other, u"a", u"n", Number(4)) == StatusSuccess);
    REQUIRE(Set(one, u"b", u"o", Number(5)) == StatusSuccess);
    CHECK(agree());

    const std::weak_ptr<RegistryKey> open = KeyAt(one.Root(), u"a");
    const RegistryValue large{RegBinary, std::string(5000, 'x')};
    for (std::uint8_t count = 0; count < 20; ++count) {
        REQUIRE(Set(other, u"a", u"large", large) == StatusSuccess);
        REQUIRE(Set(other, u"a", u"large", Number(count)) == StatusSuccess);
    }
    CHECK(folder.MachineText().size() < 100000);
    CHECK(agree());
    CHECK(KeyAt(one.Root(), u"a") == open.lock());
    REQUIRE(Set(one, u"b", u"p", Number(6)) == StatusSuccess);  // the last key of the rewritten file
    CHECK(agree());

    folder.MachineText(std::string(RegFirstLine) + "[HKEY_LOCAL_MACHINE\\fresh]\n" + std::string(70000, '\n'));
    CHECK(agree());
    CHECK(KeyAt(one.Root(), u"fresh") != nullptr);
    CHECK(open.expired());
    std::filesystem::remove(folder.MachineFile());
    CHECK(agree());
    CHECK(one.Root()->SubKeyCount() == 0);
}

TEST_CASE("What could not be read stays: in the file, and beside it when it is rewritten") {
    const RegistryFolder folder;
    const std::string sound = "[HKEY_LOCAL_MACHINE\\a]\r\n\"n\"=dword:00000001\r\n";
    const std::string damaged = std::string(RegFirstLine) + "garbage\n" + sound + "more garbage, unfinished";
    folder.MachineText(damaged);
    RegistryJournal journal = JournalOf(folder.MachineFile());
    REQUIRE(Set(journal, u"a", u"m", Number(2)) == StatusSuccess);
    CHECK(folder.MachineText().starts_with(damaged + "\r\n"));

    while (!std::filesystem::exists(folder.Path() / "machine.reg.damaged")) {
        REQUIRE(Set(journal, u"a", u"large", {RegBinary, std::string(30000, 'x')}) == StatusSuccess);
        REQUIRE(Set(journal, u"a", u"large", Number(0)) == StatusSuccess);
        REQUIRE(folder.MachineText().size() < 1000000);
    }
    CHECK(folder.MachineText().find("garbage") == std::string::npos);
    CHECK(DumpOf(folder.MachineFile()) == Dump(*journal.Root()));
    CHECK(KeyAt(journal.Root(), u"a")->ValueCount() == 3);
    std::filesystem::rename(folder.Path() / "machine.reg.damaged", folder.MachineFile());
    CHECK(folder.MachineText().starts_with(damaged));
}

TEST_CASE("A UTF-16 export is read in either byte order and becomes UTF-8 with the first change") {
    const std::u16string text =
        u"Windows Registry Editor Version 5.00\r\n[HKEY_LOCAL_MACHINE\\\u20AC]\r\n\"n\"=dword:1\r\n";
    for (const bool lowFirst : {true, false}) {
        const RegistryFolder folder;
        std::string bytes;
        for (const char16_t character : u'\xFEFF' + text) {
            const char low = static_cast<char>(character & 0xFF);
            const char high = static_cast<char>(character >> 8);
            bytes.append({lowFirst ? low : high, lowFirst ? high : low});
        }
        folder.MachineText(bytes);
        RegistryJournal journal = JournalOf(folder.MachineFile());
        REQUIRE(journal.CatchUp() == StatusSuccess);
        const std::weak_ptr<RegistryKey> open = KeyAt(journal.Root(), u"\u20AC");
        REQUIRE(Set(journal, u"\u20AC", u"m", Number(2)) == StatusSuccess);
        CHECK(open.lock() == KeyAt(journal.Root(), u"\u20AC"));
        const std::string head = "\r\n[HKEY_LOCAL_MACHINE\\\xE2\x82\xAC]\r\n";
        CHECK(folder.MachineText() == RegFirstLine.data() + head + "\"n\"=dword:00000001\r\n\"m\"=dword:00000002\r\n");
    }
}

TEST_CASE("A change that the disk has no room for is refused and leaves no trace") {
    const RegistryFolder folder;
    RegistryJournal journal = JournalOf(folder.MachineFile());
    REQUIRE(Set(journal, u"a", u"n", Number(1)) == StatusSuccess);
    const std::string text = folder.MachineText();
    const std::string dump = Dump(*journal.Root());

    rlimit earlier = {};
    REQUIRE(getrlimit(RLIMIT_FSIZE, &earlier) == 0);
    const rlimit full = {text.size() + 10, earlier.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    REQUIRE(setrlimit(RLIMIT_FSIZE, &full) == 0);
    const Status status = Set(journal, u"a", u"m", {RegBinary, std::string(100, 'x')});
    REQUIRE(setrlimit(RLIMIT_FSIZE, &earlier) == 0);
    std::signal(SIGXFSZ, handler);

    CHECK(status == StatusDiskFull);
    CHECK(folder.MachineText() == text);
    CHECK(Dump(*journal.Root()) == dump);
    CHECK(Set(journal, u"a", u"m", Number(2)) == StatusSuccess);
    CHECK(DumpOf(folder.MachineFile()) == Dump(*journal.Root()));
}

TEST_CASE("Two processes that change one machine at once lose nothing of each other") {
    constexpr int changes = 400;
    const RegistryFolder folder;
    const Handle before = OpenedTable("Software\\Table");
    const auto writing = [&](const std::string& mine) {
        for (int count = 0; count < changes; ++count) {
            RegSetValueExA(before, mine + std::to_string(count), RegDword, std::string_view("\1\0\0\0", 4));
            RegSetValueExA(before, "shared", RegSz, mine + std::string(200 + static_cast<std::size_t>(count), 'x'));
        }
    };
    const std::vector<pid_t> processes = {Started([&] { writing("a"); }), Started([&] { writing("b"); })};
    for (const pid_t process : processes) {
        int end = 0;
        REQUIRE(waitpid(process, &end, 0) == process);
        CHECK(end == 0);
    }
    int found = 0;
    for (const std::string name : {"a", "b"}) {
        for (int count = 0; count < changes; ++count) {
            std::uint32_t type = 0;
            std::uint32_t size = 0;
            found += RegQueryValueExA(before, name + std::to_string(count), type, {}, size) == StatusSuccess ? 1 : 0;
        }
    }
    CHECK(found == 2 * changes);
    CHECK(folder.MachineText().size() < changes * 400U);  // it was rewritten meanwhile
    CHECK_FALSE(std::filesystem::exists(folder.Path() / "machine.reg.damaged"));
    RegCloseKey(before);
}

TEST_CASE("A process killed at any moment leaves whole changes alone") {
    const RegistryFolder folder;
    const Handle witness = OpenedTable("Software\\Witness");
    REQUIRE(RegSetValueExA(witness, "n", RegSz, "unchanged") == StatusSuccess);
    RegCloseKey(witness);
    const std::string text(300, 'x');
    const auto writing = [&] {
        for (;;) {
            const Handle table = OpenedTable("Software\\Table");
            for (int count = 0; count < 50; ++count) {
                RegSetValueExA(table, "n" + std::to_string(count), RegBinary, text);
            }
            RegCloseKey(table);
            RegDeleteKeyA(KeyLocalMachine, "Software\\Table");
        }
    };
    std::mt19937 random(4);
    for (int count = 0; count < 200; ++count) {
        const pid_t process = Started(writing);
        usleep(static_cast<useconds_t>(random() % 6000));
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);

        RegistryJournal journal = JournalOf(folder.MachineFile());
        REQUIRE(journal.CatchUp() == StatusSuccess);
        const RegistryKey::Pointer software = KeyAt(journal.Root(), u"Software");
        REQUIRE(software->SubKey(u"Witness") != nullptr);
        REQUIRE(software->SubKey(u"Witness")->Value(u"n")->data.size() == 20);
        const RegistryKey::Pointer table = software->SubKey(u"Table");
        for (std::size_t index = 0; table != nullptr && index < table->ValueCount(); ++index) {
            REQUIRE(table->ValueAt(index)->second.data == text);
        }
    }
    CHECK_FALSE(std::filesystem::exists(folder.Path() / "machine.reg.damaged"));
}
