#include <windows.h>

// A library without functions, for the files of which the check reads the version and the date alone.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    return TRUE;
}
