#include "ProductEntries.h"

void ProductEntries::Add(const std::string& subKey, const std::string& displayName, const std::string& unInstallString,
                         const std::optional<RawData>& version, const std::string& installLocation, bool userMode) {
    const std::string root = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";
    if (userMode) {
        keys_.push_back(root + "Installer\\UserData\\S-1-5-18\\Products\\" + subKey);
        keys_.push_back(keys_.back() + "\\InstallProperties");
    } else {
        keys_.push_back(root + "Uninstall\\" + subKey);
    }
    RawValueSet(platform::KeyLocalMachine, keys_.back(), "DisplayName", RawText(displayName));
    RawValueSet(platform::KeyLocalMachine, keys_.back(), "UninstallString", RawText(unInstallString));
    if (!installLocation.empty()) {
        RawValueSet(platform::KeyLocalMachine, keys_.back(), "InstallLocation", RawText(installLocation));
    }
    if (version) {
        RawValueSet(platform::KeyLocalMachine, keys_.back(), "Version", *version);
    }
}

void ProductEntries::Clear() {
    for (; !keys_.empty(); keys_.pop_back()) {
        platform::RegDeleteKeyA(platform::KeyLocalMachine, keys_.back());
    }
}
