#pragma once

#include "common/Text.h"
#include "version/ProductProfile.h"

inline constexpr TextView ReportingRegistryPath = u"Software\\Vandrel\\Tallora\\V4\\Reporting";

// The profile of the reporting module. Its root lies below the main product's.
class ProductProfileReporting {
public:
    // Fully set up, with the version in force resolved. Raises what ProductProfile::Init raises.
    ProductProfileReporting();

    ProductProfile Profile;
};
