#pragma once

#include "version/Product.h"
#include "version/ProductProfile.h"

// The profile of the reporting module.
class ProductProfileReporting {
public:
    // Resolves the version in force. Raises the same errors as ProductProfile::Init.
    ProductProfileReporting() {
        Profile.RegistryPath = ReportingProduct.registryPath;
        Profile.Init();
    }

    ProductProfile Profile;
};
