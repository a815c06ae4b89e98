#pragma once

#include "common/Text.h"
#include "platform/Handle.h"

// The check's window: runs the check once more, shows that run's report on green or red, and puts it on the
// clipboard.
class frmVCoreTest {
public:
    frmVCoreTest();
    ~frmVCoreTest();
    frmVCoreTest(const frmVCoreTest&) = delete;
    frmVCoreTest& operator=(const frmVCoreTest&) = delete;

    // Loads the window, with the whole check, and shows it until its close box unloads it.
    void ShowModal();

private:
    void Form_Load();
    void Form_Resize();
    void RunCheck();
    void ReportShow(const Text& text);

    platform::Handle window_;
    bool resizing_ = false;
};
