#pragma once

#include "version/ProductProfile.h"

// The profile of the main product.
class ProductProfileMain {
public:
    static const Text RegistryPath;

    // Fully set up, with the version in force resolved. Raises what ProductProfile::Init raises.
    ProductProfileMain();

    ProductProfile Profile;
};
