#pragma once

#include <cstddef>
#include <memory>

#include "platform/Handle.h"
#include "version/ProductProfileMain.h"
#include "version/ProductProfileReporting.h"

// The main window. Each button runs one operation on the tables or the control file. While the window is loaded, it
// owns the profiles of both products, and the globals of modVTV4Version refer to their tables.
class frmVTV4V {
public:
    frmVTV4V();
    ~frmVTV4V();
    frmVTV4V(const frmVTV4V&) = delete;
    frmVTV4V& operator=(const frmVTV4V&) = delete;

    // Loads the window and shows it until "Fertig" hides it or the close box unloads it. If loading fails, shows the
    // reason in a message box instead.
    void ShowModal();

private:
    bool TryLoad();
    void Unload();
    void Activated();
    void Clicked(std::size_t button);

    platform::Handle window_;
    std::unique_ptr<ProductProfileMain> mainProfile_;
    std::unique_ptr<ProductProfileReporting> reportingProfile_;
    bool enteringTaskBar_ = false;
    bool operationRunning_ = false;
};
