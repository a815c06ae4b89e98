#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include "Editor.h"

// The driver is also the editor that the program opens the control file in, so that the cases see what it was given.
int main(int argc, char** argv) {
    if (EditorStarted(argc, argv)) {
        return 0;
    }
    return doctest::Context(argc, argv).run();
}
