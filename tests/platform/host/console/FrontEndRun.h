#pragma once

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "platform/host/console/Console.h"

// The front end fed with lines through a pipe's stand-in, and what it has written so far.
class FrontEndRun {
public:
    explicit FrontEndRun(const std::string& input) {
        std::fwrite(input.data(), 1, input.size(), input_.get());
        std::rewind(input_.get());
    }

    [[nodiscard]] std::string Output() const {
        std::ifstream output("/proc/self/fd/" + std::to_string(fileno(output_.get())), std::ios::binary);
        return {std::istreambuf_iterator<char>(output), {}};
    }

    [[nodiscard]] bool Shows(const std::string& text) const { return Output().find(text) != std::string::npos; }

private:
    using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

    File input_{std::tmpfile(), std::fclose};
    File output_{std::tmpfile(), std::fclose};
    platform::host::ConsoleStreams streams_{fileno(input_.get()), fileno(output_.get())};
};
