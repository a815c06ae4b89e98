#pragma once

#include "common/Text.h"
#include "version/ProductProfile.h"

inline constexpr TextView MainRegistryPath = u"Software\\Vandrel\\Tallora\\V4";

// The profile of the main product.
class ProductProfileMain {
public:
    // Fully set up, with the version in force resolved. Raises what ProductProfile::Init raises.
    ProductProfileMain();

    ProductProfile Profile;
};
