#pragma once

#include <optional>
#include <string>
#include <vector>

#include "RawRegistry.h"

// Entries of installed products in the local machine's registry, gone with their owner.
class ProductEntries {
public:
    ProductEntries() = default;
    ~ProductEntries() { Clear(); }
    ProductEntries(const ProductEntries&) = delete;
    ProductEntries& operator=(const ProductEntries&) = delete;

    // Below the key of setup programs or, with `userMode`, of the system's own installer.
    void Add(const std::string& subKey, const std::string& displayName, const std::string& unInstallString,
             const std::optional<RawData>& version = {}, const std::string& installLocation = {},
             bool userMode = false);
    void Clear();

private:
    std::vector<std::string> keys_;
};
