#pragma once

#include "common/Text.h"
#include "platform/Handle.h"

// The window that repeats the check, shows the report on a green or red panel and copies it to the clipboard.
class frmVCoreTest {
public:
    frmVCoreTest();
    ~frmVCoreTest();
    frmVCoreTest(const frmVCoreTest&) = delete;
    frmVCoreTest& operator=(const frmVCoreTest&) = delete;

    // Loads the window, which runs the check, and shows it until the user closes it.
    void ShowModal();

private:
    void Form_Load();
    void Form_Resize();
    void RunCheck();
    void ReportShow(const Text& text);

    platform::Handle window_;
    bool resizing_ = false;
};
