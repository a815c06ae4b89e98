#include "version/ProductProfileReporting.h"

const Text ProductProfileReporting::RegistryPath = u"Software\\Vandrel\\Tallora\\V4\\Reporting";

ProductProfileReporting::ProductProfileReporting() {
    Profile.RegistryPath = RegistryPath;
    Profile.Init();
}
