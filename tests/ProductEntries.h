#pragma once

#include <optional>
#include <string>
#include <vector>

#include "RawRegistry.h"

// Adds installed products to the local machine's registry and removes them on destruction.
class ProductEntries {
public:
    ProductEntries() = default;
    ~ProductEntries() { Clear(); }
    ProductEntries(const ProductEntries&) = delete;
    ProductEntries& operator=(const ProductEntries&) = delete;

    // Adds a product below Windows Installer's key if `userMode` is true, otherwise below the Uninstall key.
    void Add(const std::string& subKey, const std::string& displayName, const std::string& unInstallString,
             const std::optional<RawData>& version = {}, const std::string& installLocation = {},
             bool userMode = false) {
        const std::string root = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";
        keys_.push_back(root +
                        (userMode ? "Installer\\UserData\\S-1-5-18\\Products\\" + subKey : "Uninstall\\" + subKey));
        if (userMode) {
            keys_.push_back(keys_.back() + "\\InstallProperties");
        }
        const auto set = [&](const char* name, const RawData& data) {
            RawValueSet(platform::KeyLocalMachine, keys_.back(), name, data);
        };
        set("DisplayName", RawText(displayName));
        set("UninstallString", RawText(unInstallString));
        set("InstallLocation", RawText(installLocation));
        if (version) {
            set("Version", *version);
        }
    }
    void Clear() {
        for (; !keys_.empty(); keys_.pop_back()) {
            platform::RegDeleteKeyA(platform::KeyLocalMachine, keys_.back());
        }
    }

private:
    std::vector<std::string> keys_;
};
