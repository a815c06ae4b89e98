#include "samples/InstalledSuite.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>

#include "platform/RegistryCalls.h"
#include "platform/host/Machine.h"
#include "samples/SampleImage.h"

namespace {

// Folders on drive C.
constexpr std::string_view System = "WINDOWS\\System32\\";
constexpr std::string_view Common = "Program Files\\Common Files\\";
constexpr std::string_view Core = "Program Files\\Vandrel\\Core\\V1\\";

constexpr const char* CorePackageCode = "{6B1F0C52-8E1D-4C0B-9A53-2D7F40E1C9A1}";

struct Component {
    std::string_view folder;
    std::string_view file;  // below the folder
};

constexpr std::array<Component, 26> Components = {{
    {System, "MSVBVM60.DLL"},
    {System, "OLEAUT32.DLL"},
    {System, "OLEPRO32.DLL"},
    {System, "ASYCFILT.DLL"},
    {System, "STDOLE2.TLB"},
    {System, "COMCAT.DLL"},
    {System, "VB6DE.DLL"},
    {System, "MSSTDFMT.DLL"},
    {System, "SCRRUN.DLL"},
    {System, "COMDLG32.OCX"},
    {System, "MSCOMCTL.OCX"},
    {System, "MSCOMCT2.OCX"},
    {System, "COMCT332.OCX"},
    {Common, "Microsoft Shared\\DAO\\DAO360.DLL"},
    {Common, "Designer\\MSADDNDR.DLL"},
    {System, "sevPopUp2.dll"},
    {System, "sevImLib2.dll"},
    {System, "sevCmd4.ocx"},
    {System, "sevEin20.ocx"},
    {System, "sevClb30.ocx"},
    {System, "sevMenuXP2.ocx"},
    {System, "sevXPCtl.ocx"},
    {System, "sevDataGrid3.ocx"},
    {System, "sevDTA30.dll"},
    {Core, "vcutil1.dll"},
    {Core, "Extras\\MazeWalker.exe"},
}};

struct Registration {
    const char* programmaticIdentifier;
    const char* classIdentifier;
    std::string_view file;
    std::string_view folder;
};

constexpr Registration PopUp = {"sevPopUp2.PopUp", "{3C0E5F0A-52B4-4E0E-8D5E-9C1B6A7F2101}", "sevPopUp2.dll", System};
constexpr Registration DebugLog = {"VCUTIL1.DebugLog", "{3C0E5F0A-52B4-4E0E-8D5E-9C1B6A7F2102}", "vcutil1.dll", Core};

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return lower;
}

std::string_view FileName(std::string_view path) {
    return path.substr(path.rfind('\\') + 1);
}

bool LeftOut(const std::set<std::string>& without, std::string_view name) {
    return std::any_of(without.begin(), without.end(),
                       [&](const std::string& left) { return Lower(left) == Lower(name); });
}

// The one component whose row has another name than its file.
bool ComponentLeftOut(const std::set<std::string>& without, std::string_view file) {
    return LeftOut(without, file) || (file == PopUp.file && LeftOut(without, PopUp.programmaticIdentifier));
}

std::filesystem::file_time_type ReleaseTime() {
    std::tm local{};
    local.tm_year = 2017 - 1900;
    local.tm_mon = 12 - 1;
    local.tm_mday = 16;
    local.tm_hour = 10;
    local.tm_min = 16;
    local.tm_sec = 40;
    local.tm_isdst = -1;
    return std::chrono::file_clock::from_sys(std::chrono::system_clock::from_time_t(std::mktime(&local)));
}

void AddFile(const Component& component) {
    std::string path = std::string(component.folder) + std::string(component.file);
    std::replace(path.begin(), path.end(), '\\', '/');
    const std::filesystem::path file = platform::host::MachineFolder() / "drives" / "c" / path;
    std::filesystem::create_directories(file.parent_path());
    const bool program = path.ends_with(".exe");
    std::ofstream(file, std::ios::binary) << SampleImage({.version = {1, 2, 3, 4}, .fileType = program ? 1U : 2U});
    std::filesystem::last_write_time(file, ReleaseTime());
}

void AddText(const char* fileName, const std::string& text) {
    std::ofstream(platform::host::MachineFolder() / fileName, std::ios::app) << text;
}

// A value of the key `path` below `root`, the key created where it is missing.
void AddValue(platform::Handle root, const std::string& path, const std::string& name, std::uint32_t type,
              std::string_view data) {
    platform::Handle key = 0;
    std::uint32_t disposition = 0;
    platform::Status status = platform::RegCreateKeyExA(root, path, "", 0, platform::KeySetValue, key, disposition);
    if (status == platform::StatusSuccess) {
        status = platform::RegSetValueExA(key, name, type, data);
        platform::RegCloseKey(key);
    }
    if (status != platform::StatusSuccess) {
        throw std::runtime_error("the machine's registry refuses " + path);
    }
}

void AddRegistration(const Registration& registration) {
    const std::string identifier = registration.programmaticIdentifier;
    const std::string classKey = std::string("CLSID\\") + registration.classIdentifier;
    const std::string server = "C:\\" + std::string(registration.folder) + std::string(registration.file);
    AddValue(platform::KeyClassesRoot, identifier, "", platform::RegSz, identifier);
    AddValue(platform::KeyClassesRoot, identifier + "\\CLSID", "", platform::RegSz, registration.classIdentifier);
    AddValue(platform::KeyClassesRoot, classKey, "", platform::RegSz, identifier);
    AddValue(platform::KeyClassesRoot, classKey + "\\InprocServer32", "", platform::RegSz, server);
    AddValue(platform::KeyClassesRoot, classKey + "\\InprocServer32", "ThreadingModel", platform::RegSz, "Apartment");
    AddValue(platform::KeyClassesRoot, classKey + "\\ProgID", "", platform::RegSz, identifier);
}

void AddCorePackage() {
    const std::string key = std::string("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\") + CorePackageCode;
    const auto text = [&](const char* name, const std::string& value) {
        AddValue(platform::KeyLocalMachine, key, name, platform::RegSz, value);
    };
    text("DisplayName", "Vandrel Core V1");
    text("UninstallString", std::string("MsiExec.exe /X") + CorePackageCode);
    text("InstallLocation", "C:\\" + std::string(Core));
    AddValue(platform::KeyLocalMachine, key, "Version", platform::RegDword, {"\x03\x00\x02\x01", 4});  // 1.2.3
}

}  // namespace

void InstalledSuiteAdd(const std::set<std::string>& without) {
    for (const Component& component : Components) {
        if (!ComponentLeftOut(without, FileName(component.file))) {
            AddFile(component);
        }
    }
    for (const Registration& registration : {PopUp, DebugLog}) {
        if (!ComponentLeftOut(without, registration.file) && !LeftOut(without, registration.programmaticIdentifier)) {
            AddRegistration(registration);
        }
    }
    AddCorePackage();
    AddText("environment",
            "SystemRoot=C:\\WINDOWS\n"
            "ProgramFiles=C:\\Program Files\n"
            "CommonProgramFiles=C:\\Program Files\\Common Files\n");
    AddText("components", "sevDTA30.dll!sevDTA_Init=0\n");
}

bool InstalledSuiteKnows(const std::string& name) {
    return LeftOut({name}, PopUp.programmaticIdentifier) || LeftOut({name}, DebugLog.programmaticIdentifier) ||
           std::any_of(Components.begin(), Components.end(),
                       [&](const Component& component) { return LeftOut({name}, FileName(component.file)); });
}
