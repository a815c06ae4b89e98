#include <windows.h>

// A program that ends at once.
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    return 0;
}
