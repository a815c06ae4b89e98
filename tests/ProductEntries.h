#pragma once

#include <string>
#include <vector>

#include "RawRegistry.h"

// Adds installed products to the Uninstall key in the local machine's registry.
class ProductEntries {
public:
    void Add(const std::string& subKey, const std::string& displayName, const std::string& unInstallString,
             const RawData& version = RawNumber(1), const std::string& installLocation = {}) {
        keys_.push_back("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\" + subKey);
        for (const auto& [name, data] : {std::pair("DisplayName", RawText(displayName)),
                                         {"UninstallString", RawText(unInstallString)},
                                         {"InstallLocation", RawText(installLocation)},
                                         {"Version", version}}) {
            RawValueSet(platform::KeyLocalMachine, keys_.back(), name, data);
        }
    }
    void Clear() const {
        for (const std::string& key : keys_) {
            platform::RegDeleteKeyA(platform::KeyLocalMachine, key);
        }
    }

private:
    std::vector<std::string> keys_;
};
