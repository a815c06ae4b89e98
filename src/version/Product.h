#pragma once

#include <array>

#include "common/Text.h"

// A product of the suite.
struct Product {
    TextView section;       // the name of the product's section in the control file
    TextView registryPath;  // the product's root below HKEY_LOCAL_MACHINE and HKEY_CURRENT_USER
};

inline constexpr Product MainProduct = {u"Tallora", u"Software\\Vandrel\\Tallora\\V4"};
inline constexpr Product ReportingProduct = {u"Reporting", u"Software\\Vandrel\\Tallora\\V4\\Reporting"};

// All products, in the order of their sections in the control file.
inline constexpr std::array Products = {MainProduct, ReportingProduct};
