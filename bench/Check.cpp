// A program that runs the whole check on this machine once, and nothing else. With any argument it prints the report.

#include <iostream>

#include "installcheck/VcoreTest.h"
#include "platform/Regional.h"

int main(int argumentCount, char** /*arguments*/) {
    VcoreTest check;
    const bool passed = check.Ok(false);
    if (argumentCount > 1) {
        std::cout << platform::AnsiFromText(check.Text());
    }
    if (!passed) {
        std::cerr << "bench-check: something is missing on this machine\n";
        return 1;
    }
    return 0;
}
