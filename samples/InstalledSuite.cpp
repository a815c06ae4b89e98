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

#include "platform/ComponentCalls.h"
#include "platform/Process.h"
#include "platform/RegistryCalls.h"
#include "platform/host/Machine.h"
#include "platform/host/drive/Drive.h"
#include "samples/SampleImage.h"
#include "samples/SuiteComponents.h"

namespace {

struct Folder {
    const char* variable;
    const char* defaultValue;
    const char* subfolder;  // the subfolder that contains the suite's files
};
// Indexed by SuiteFolder.
constexpr std::array<Folder, 4> Folders = {{
    {"SystemRoot", "C:\\Windows", "\\System32\\"},
    {"CommonProgramFiles", "C:\\Program Files\\Common Files", "\\"},
    {"ProgramFiles", "C:\\Program Files", "\\Vandrel\\Core\\V1\\"},
    {"ProgramFiles", "C:\\Program Files", "\\"},
}};

constexpr const char* CorePackageCode = "{6B1F0C52-8E1D-4C0B-9A53-2D7F40E1C9A1}";

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return lower;
}

bool Contains(const std::set<std::string>& names, std::string_view name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& element) { return Lower(element) == Lower(name); });
}

bool ExcludesFile(const std::set<std::string>& without, const SuiteComponent& component) {
    return Contains(without, component.row) || Contains(without, component.file);
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

std::string FolderPath(SuiteFolder suiteFolder) {
    const Folder& folder = Folders[static_cast<std::size_t>(suiteFolder)];
    const std::string value = platform::GetEnvironmentVariableA(folder.variable);
    return (value.empty() ? folder.defaultValue : value) + folder.subfolder;
}

std::string FilePath(const SuiteComponent& component) {
    return FolderPath(component.folder) + std::string(component.file);
}

void AddComponent(const SuiteComponent& component) {
    const std::string path = FilePath(component);
    const std::uint32_t fileType = path.ends_with(".exe") ? 1 : 2;
    if (AddFile(path, SampleImage({.version = {1, 2, 3, 4}, .fileType = fileType}))) {
        std::filesystem::last_write_time(platform::host::ResolvePath(path).path, ReleaseTime());
    }
}

bool IsUnset(platform::Handle key, const std::string& name) {
    std::uint32_t type = platform::RegNone;
    std::uint32_t size = 0;
    return platform::RegQueryValueExA(key, name, type, {}, size) == platform::StatusFileNotFound;
}

void AddRegistration(const SuiteComponent& component) {
    const std::string object(component.object);
    const std::string classKey = "CLSID\\" + std::string(component.classIdentifier);
    AddValue(platform::KeyClassesRoot, object, "", platform::RegSz, object);
    AddValue(platform::KeyClassesRoot, object + "\\CLSID", "", platform::RegSz, component.classIdentifier);
    AddValue(platform::KeyClassesRoot, classKey, "", platform::RegSz, object);
    AddValue(platform::KeyClassesRoot, classKey + "\\InprocServer32", "", platform::RegSz, FilePath(component));
    AddValue(platform::KeyClassesRoot, classKey + "\\InprocServer32", "ThreadingModel", platform::RegSz, "Apartment");
    AddValue(platform::KeyClassesRoot, classKey + "\\ProgID", "", platform::RegSz, object);
}

void RemoveRegistration(const SuiteComponent& component) {
    const std::string key = std::string(component.object) + "\\CLSID";
    const platform::Status status = platform::RegDeleteKeyA(platform::KeyClassesRoot, key);
    if (status != platform::StatusSuccess && status != platform::StatusFileNotFound) {
        throw std::runtime_error("cannot delete registry key " + key + ": status " + std::to_string(status));
    }
}

void AddCorePackage() {
    const std::string key = std::string("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\") + CorePackageCode;
    const auto text = [&](const char* name, const std::string& value) {
        AddValue(platform::KeyLocalMachine, key, name, platform::RegSz, value);
    };
    text("DisplayName", "Vandrel Core V1");
    text("UninstallString", std::string("MsiExec.exe /X") + CorePackageCode);
    text("InstallLocation", FolderPath(SuiteFolder::Core));
    AddValue(platform::KeyLocalMachine, key, "Version", platform::RegDword, {"\x03\x00\x02\x01", 4});  // 1.2.3
}

}  // namespace

// Creates one level at a time, because the names of existing folders may differ in case.
void CreateFolders(const std::string& path) {
    if (!platform::host::ResolvePath("C:\\").IsFolder()) {
        std::filesystem::create_directories(platform::host::MachineFolder() / "drives" / "c");
    }
    const std::size_t first = path.find('\\') + 1;
    for (std::size_t end = path.find('\\', first); end != std::string::npos; end = path.find('\\', end + 1)) {
        const platform::host::ResolvedPath level = platform::host::ResolvePath(path.substr(0, end));
        if (level.status == platform::StatusFileNotFound) {
            std::filesystem::create_directory(level.path);
        }
    }
}

bool AddFile(const std::string& path, std::string_view content) {
    CreateFolders(path);
    const platform::host::ResolvedPath resolved = platform::host::ResolvePath(path);
    if (resolved.status == platform::StatusSuccess) {
        return false;
    }
    const std::string unfinished = resolved.path + ".new";
    std::ofstream file(unfinished, std::ios::binary);
    file << content << std::flush;
    if (!file) {
        throw std::runtime_error("cannot write " + unfinished);
    }
    std::filesystem::rename(unfinished, resolved.path);
    return true;
}

void AppendLine(const std::filesystem::path& path, const std::string& line) {
    std::filesystem::create_directories(path.parent_path());
    std::ifstream earlier(path, std::ios::binary | std::ios::ate);
    const bool endsInLine =
        !earlier || earlier.tellg() <= 0 || (earlier.seekg(-1, std::ios::end), earlier.get() == '\n');
    std::ofstream file(path, std::ios::binary | std::ios::app);
    file << (endsInLine ? "" : "\n") << line << '\n' << std::flush;
    if (!file) {
        throw std::runtime_error("cannot write " + path.native());
    }
}

void AddValue(platform::Handle root, const std::string& path, const std::string& name, std::uint32_t type,
              std::string_view data) {
    platform::Handle key = 0;
    std::uint32_t disposition = 0;
    platform::Status status =
        platform::RegCreateKeyExA(root, path, "", 0, platform::KeyQueryValue + platform::KeySetValue, key, disposition);
    if (status == platform::StatusSuccess && IsUnset(key, name)) {
        status = platform::RegSetValueExA(key, name, type, data);
    }
    platform::RegCloseKey(key);
    if (status != platform::StatusSuccess) {
        throw std::runtime_error("cannot write registry key " + path + ": status " + std::to_string(status));
    }
}

void InstalledSuiteAdd(const std::set<std::string>& without) {
    for (const Folder& folder : Folders) {
        if (platform::GetEnvironmentVariableA(folder.variable).empty()) {
            AppendLine(platform::host::MachineFolder() / "environment",
                       std::string(folder.variable) + "=" + folder.defaultValue);
        }
    }
    for (const SuiteComponent& component : SuiteComponents) {
        const bool excludesFile = ExcludesFile(without, component);
        if (excludesFile) {
            std::filesystem::remove(platform::host::ResolvePath(FilePath(component)).path);
        } else {
            AddComponent(component);
        }
        if (component.object.empty()) {
            continue;
        }
        if (excludesFile || Contains(without, component.object)) {
            RemoveRegistration(component);
        } else {
            AddRegistration(component);
        }
    }
    AddCorePackage();
    std::int32_t result = 0;
    const std::string library = FolderPath(SuiteFolder::System) + "sevDTA30.dll";
    if (platform::CallTextFunction(library, "sevDTA_Init", "", result) != platform::StatusSuccess) {
        AppendLine(platform::host::MachineFolder() / "components", "sevDTA30.dll!sevDTA_Init=0");
    }
}

bool InstalledSuiteKnows(const std::string& name) {
    return std::any_of(SuiteComponents.begin(), SuiteComponents.end(), [&](const SuiteComponent& component) {
        return ExcludesFile({name}, component) || (!name.empty() && Contains({name}, component.object));
    });
}
