#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/host/RegFile.h"
#include "platform/host/RegistryJournal.h"

// A machine folder of a test case's own, which is the machine until it ends.
class RegistryFolder {
public:
    RegistryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "vtv4v-registry-XXXXXX";
        path_ = mkdtemp(pattern.data());
        if (const char* const earlier = std::getenv("VTV4V_MACHINE"); earlier != nullptr) {
            earlier_ = earlier;
        }
        setenv("VTV4V_MACHINE", path_.c_str(), 1);
    }
    ~RegistryFolder() {
        if (earlier_) {
            setenv("VTV4V_MACHINE", earlier_->c_str(), 1);
        } else {
            unsetenv("VTV4V_MACHINE");
        }
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    RegistryFolder(const RegistryFolder&) = delete;
    RegistryFolder& operator=(const RegistryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    [[nodiscard]] std::filesystem::path MachineFile() const { return path_ / "machine.reg"; }

    void MachineText(std::string_view text) const { std::ofstream(MachineFile(), std::ios::binary) << text; }
    [[nodiscard]] std::string MachineText() const {
        std::ifstream file(MachineFile(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path path_;
    std::optional<std::string> earlier_;
};

inline constexpr std::string_view RegFirstLine = "Windows Registry Editor Version 5.00\r\n";
inline const std::vector<platform::host::RegFileRoot> MachineRoots = {{u"HKEY_LOCAL_MACHINE", {}},
                                                                      {u"HKEY_CLASSES_ROOT", u"Software\\Classes"}};

// Everything that a tree holds, as text.
inline std::string Dump(const platform::host::RegistryKey& root) {
    std::string text;
    platform::host::WriteRegFile(root, u"HKEY_LOCAL_MACHINE", [&text](std::string_view piece) { text += piece; });
    return text;
}

inline platform::host::RegistryJournal JournalOf(const std::filesystem::path& file) {
    return {file, MachineRoots, {}};
}
