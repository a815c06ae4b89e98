#pragma once

#include "version/ProductProfile.h"

// The profile of the reporting module. Its root lies below the main product's.
class ProductProfileReporting {
public:
    static const Text RegistryPath;

    // Fully set up, with the version in force resolved. Raises what ProductProfile::Init raises.
    ProductProfileReporting();

    ProductProfile Profile;
};
