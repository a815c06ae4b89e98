#include "platform/host/console/NewtView.h"

namespace platform::host {

std::unique_ptr<DialogView> NewtShow(const Dialog& /*dialog*/) {
    return nullptr;
}

std::optional<Size> NewtScreenSize() {
    return std::nullopt;
}

void NewtSuspend() {
}

void NewtResume() {
}

}  // namespace platform::host
