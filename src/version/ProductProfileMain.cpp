#include "version/ProductProfileMain.h"

ProductProfileMain::ProductProfileMain() {
    Profile.RegistryPath = MainRegistryPath;
    Profile.Init();
}
