// The list of installed products, and the lookup of one that is not there, over growing numbers of subkeys, beside a
// bare loop of the registry calls that read the same values.

#include <benchmark/benchmark.h>

#include <array>
#include <fstream>
#include <string>

#include "bench/BenchMachine.h"
#include "platform/RegistryCalls.h"
#include "products/Installer.h"

namespace {

const std::string Products = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";

void ProductsMade(const BenchMachine& machine, std::int64_t count) {
    std::ofstream file(machine.Folder() / "machine.reg", std::ios::binary);
    file << "Windows Registry Editor Version 5.00\r\n";
    for (std::int64_t number = 0; number < count; ++number) {
        file << "\r\n[HKEY_LOCAL_MACHINE\\" << Products << "\\Product" << number << "]\r\n"
             << "\"DisplayName\"=\"Product " << number << "\"\r\n"
             << "\"UninstallString\"=\"MsiExec.exe /X{" << number << "}\"\r\n"
             << "\"Version\"=dword:04080063\r\n"
             << "\"InstallLocation\"=\"C:\\\\Program Files\\\\Product" << number << "\"\r\n";
    }
}

void InstallerList(benchmark::State& state) {
    const BenchMachine machine;
    ProductsMade(machine, state.range());
    Installer installer;
    for ([[maybe_unused]] auto round : state) {
        installer.List(false);
        if (installer.Count() != state.range()) {
            state.SkipWithError("the list is not whole");
            break;
        }
    }
}

void FailedLookup(benchmark::State& state) {
    const BenchMachine machine;
    ProductsMade(machine, state.range());
    Installer installer;
    for ([[maybe_unused]] auto round : state) {
        installer.DisplayName(u"A product that nobody has");
        if (installer.IsInstalled()) {
            state.SkipWithError("what is not there was found");
            break;
        }
    }
}

bool ProductRead(const std::string& path) {
    platform::Handle key = 0;
    if (platform::RegOpenKeyExA(platform::KeyLocalMachine, path, 0, platform::KeyQueryValue, key) != 0) {
        return false;
    }
    bool read = true;
    for (const char* const name : {"DisplayName", "UninstallString", "Version", "InstallLocation"}) {
        std::array<char, 1024> data;
        auto size = static_cast<std::uint32_t>(data.size());
        std::uint32_t type = platform::RegNone;
        read = platform::RegQueryValueExA(key, name, type, data, size) == 0 && read;
    }
    platform::RegCloseKey(key);
    return read;
}

// The number of products that could be read.
std::int64_t AllRead() {
    platform::Handle products = 0;
    platform::RegOpenKeyExA(platform::KeyLocalMachine, Products, 0, platform::KeyEnumerateSubKeys, products);
    std::array<char, 256> name;
    std::array<char, 256> className;
    auto nameSize = static_cast<std::uint32_t>(name.size());
    auto classSize = static_cast<std::uint32_t>(className.size());
    std::int32_t index = 0;
    while (platform::RegEnumKeyExA(products, index, name, nameSize, className, classSize) == 0 &&
           ProductRead(Products + "\\" + name.data())) {
        ++index;
        nameSize = static_cast<std::uint32_t>(name.size());
        classSize = static_cast<std::uint32_t>(className.size());
    }
    platform::RegCloseKey(products);
    return index;
}

void BareRegistryLoop(benchmark::State& state) {
    const BenchMachine machine;
    ProductsMade(machine, state.range());
    for ([[maybe_unused]] auto round : state) {
        if (AllRead() != state.range()) {
            state.SkipWithError("a product cannot be read");
            break;
        }
    }
}

void Sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(1250)->Arg(2500)->Arg(5000)->Arg(10000);
}
BENCHMARK(InstallerList)->Apply(Sizes);
BENCHMARK(FailedLookup)->Apply(Sizes);
BENCHMARK(BareRegistryLoop)->Apply(Sizes);

}  // namespace
