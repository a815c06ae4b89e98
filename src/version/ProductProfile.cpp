#include "version/ProductProfile.h"

ProductProfile::ProductProfile()
    : ProgOption(std::make_shared<::ProgOption>()), Table(std::make_shared<ForcedVersionTable>()) {
}

void ProductProfile::Bind() {
    ProgOption->SectionRoot(RegistryPath);
    Table->ProgOptionBind(ProgOption);
}

void ProductProfile::Init() {
    Bind();
    Table->Init();
}

ProductProfile ProfileOf(const Product& product) {
    ProductProfile profile;
    profile.RegistryPath = product.registryPath;
    profile.Bind();
    return profile;
}
