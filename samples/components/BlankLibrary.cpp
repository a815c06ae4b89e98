#include <windows.h>

// An empty library that stands in for components whose version and date are all the check reads.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    return TRUE;
}
