#include "app/Main.h"
#include "platform/Process.h"

int main(int argc, char** argv) {
    platform::ProcessStart(argc, argv);
    Main();
    return 0;
}
