#include <windows.h>

// A library without functions, for components of which the check reads only version and date.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    return TRUE;
}
