#include <exception>

#include "platform/Process.h"
#include "platform/Regional.h"
#include "rollout/Rollout.h"

int main(int argc, char** argv) {
    platform::ProcessStart(argc, argv);
    try {
        return static_cast<int>(RunRollout(platform::CommandLineArguments()));
    } catch (const std::exception& fault) {  // none of the language's errors
        platform::WriteConsoleW(platform::StdErrorHandle, platform::TextFromAnsi(fault.what()) + u"\r\n");
        return static_cast<int>(RolloutResult::NothingWritten);
    }
}
