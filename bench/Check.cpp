// A program that runs the whole check on this machine once, and nothing else.

#include <iostream>

#include "installcheck/VcoreTest.h"

int main() {
    if (!VcoreTest().Ok(false)) {
        std::cerr << "bench-check: something is missing on this machine\n";
        return 1;
    }
    return 0;
}
