#include "platform/windows/Apartment.h"

#include "platform/windows/Win32.h"

namespace platform::windows {

namespace {

class Apartment {
public:
    Apartment() : entered_(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {}
    ~Apartment() {
        if (entered_) {
            ::CoUninitialize();
        }
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

private:
    bool entered_;
};

}  // namespace

void EnterApartment() {
    static const Apartment apartment;
}

}  // namespace platform::windows
