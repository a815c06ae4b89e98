// A program that opens and reads the files it is given, beside which a start with its whole check is timed.

#include <algorithm>
#include <iostream>

#include "bench/OpenAndRead.h"

int main(int argumentCount, char* arguments[]) {
    if (!std::all_of(arguments + 1, arguments + argumentCount, OpenAndRead)) {
        std::cerr << "bench-read-files: a file cannot be read\n";
        return 1;
    }
    return 0;
}
