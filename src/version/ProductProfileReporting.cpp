#include "version/ProductProfileReporting.h"

ProductProfileReporting::ProductProfileReporting() {
    Profile.RegistryPath = ReportingRegistryPath;
    Profile.Init();
}
