#pragma once

#include "TestMachine.h"
#include "version/ProductProfileMain.h"
#include "version/ProductProfileReporting.h"
#include "version/modVTV4Version.h"

// A machine with the global variables that the main window sets when it loads.
struct LoadedMachine : TestMachine {
    LoadedMachine() {
        MainVersions = ProductProfileMain().Profile.Table;
        ReportingVersions = ProductProfileReporting().Profile.Table;
        ControlFilePath = ControlFilePathGet();
    }
    static void Tables(const Text& main, const Text& reporting) {
        MainVersions->ForcedVersionAll(true, main);
        ReportingVersions->ForcedVersionAll(true, reporting);
    }
    static Text Tables() {
        return MainVersions->ForcedVersionAll(true) + u" | " + ReportingVersions->ForcedVersionAll(true);
    }
};
