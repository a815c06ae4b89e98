#include <chrono>
#include <csignal>
#include <thread>

#include "Check.h"
#include "common/TextFile.h"
#include "host/MachineFiles.h"

TEST_CASE("A process killed while replacing a file leaves either the old or the new file") {
    const TestMachine machine;
    const std::string contents[] = {std::string(300000, 'a'), std::string(300000, 'b')};
    FileContent("C:\\file", contents[0]);
    for (int delay = 0; delay < 60; ++delay) {
        const pid_t writer = Started([&] {
            for (int count = 0;; ++count) {
                WriteBytes(u"C:\\file", contents[count % 2], true);
            }
            return 0;
        });
        std::this_thread::sleep_for(std::chrono::microseconds(5000 + 371 * delay));
        kill(writer, SIGKILL);
        CHECK(ExitCode(writer) == -1);
        const std::string left = FileContent("C:\\file").value_or("");
        CHECK((left == contents[0] || left == contents[1]));
    }
}
