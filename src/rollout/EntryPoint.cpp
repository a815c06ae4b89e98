#include <exception>

#include "platform/Process.h"
#include "platform/Regional.h"
#include "rollout/Rollout.h"

int main(int argc, char** argv) {
    platform::ProcessStart(argc, argv);
    try {
        return static_cast<int>(RunRollout(platform::CommandLineArguments()));
    } catch (const std::exception& fault) {
        PrintLine(platform::StdErrorHandle, platform::TextFromAnsi(fault.what()));
        return static_cast<int>(RolloutResult::Failed);
    }
}
