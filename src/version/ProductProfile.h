#pragma once

#include <memory>

#include "common/Text.h"
#include "settings/ProgOption.h"
#include "version/ForcedVersionTable.h"
#include "version/Product.h"

// Binds a product to its root in the registry. Creates the product's options and table; set RegistryPath, then call
// Init.
class ProductProfile {
public:
    ProductProfile();

    // Binds the options and the table to RegistryPath.
    void Bind();
    // Calls Bind and resolves the version in force. Raises the same errors as ForcedVersionTable::Init.
    void Init();

    std::shared_ptr<::ProgOption> ProgOption;
    std::shared_ptr<ForcedVersionTable> Table;
    Text RegistryPath;  // the product's root below HKEY_LOCAL_MACHINE and HKEY_CURRENT_USER
};

// Returns the product's profile, without resolving the version in force.
ProductProfile ProfileOf(const Product& product);
