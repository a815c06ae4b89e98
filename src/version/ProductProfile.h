#pragma once

#include <memory>

#include "common/Text.h"
#include "settings/ProgOption.h"
#include "version/ForcedVersionTable.h"

// Binds one product of the suite to its root in the registry. Its options and its table are made with it, and set up by
// Init once RegistryPath is known.
class ProductProfile {
public:
    ProductProfile();

    // Sets up options and table, and resolves the version in force. Raises what the table's Init raises.
    void Init();

    std::shared_ptr<::ProgOption> ProgOption;
    std::shared_ptr<ForcedVersionTable> Table;
    Text RegistryPath;  // the product's root below HKEY_LOCAL_MACHINE and HKEY_CURRENT_USER
};
