#include "version/ProductProfileMain.h"

const Text ProductProfileMain::RegistryPath = u"Software\\Vandrel\\Tallora\\V4";

ProductProfileMain::ProductProfileMain() {
    Profile.RegistryPath = RegistryPath;
    Profile.Init();
}
