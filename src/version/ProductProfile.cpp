#include "version/ProductProfile.h"

ProductProfile::ProductProfile()
    : ProgOption(std::make_shared<::ProgOption>()), Table(std::make_shared<ForcedVersionTable>()) {
}

// The resolution reads the registry through the options, so that these come first.
void ProductProfile::Init() {
    ProgOption->SectionRoot(RegistryPath);
    Table->ProgOptionBind(ProgOption);
    Table->Init();
}
