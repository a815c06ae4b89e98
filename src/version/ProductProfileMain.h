#pragma once

#include "version/Product.h"
#include "version/ProductProfile.h"

// The profile of the main product.
class ProductProfileMain {
public:
    // Resolves the version in force. Raises the same errors as ProductProfile::Init.
    ProductProfileMain() {
        Profile.RegistryPath = MainProduct.registryPath;
        Profile.Init();
    }

    ProductProfile Profile;
};
