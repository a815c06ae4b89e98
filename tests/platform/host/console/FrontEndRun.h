#pragma once

#include <unistd.h>

#include <array>
#include <cstdio>
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
        std::string output;
        std::array<char, 4096> bytes{};
        ssize_t count = 0;
        while ((count = pread(fileno(output_.get()), bytes.data(), bytes.size(), static_cast<off_t>(output.size()))) >
               0) {
            output.append(bytes.data(), static_cast<std::size_t>(count));
        }
        return output;
    }

    [[nodiscard]] bool Shows(const std::string& text) const { return Output().find(text) != std::string::npos; }

private:
    struct FileClose {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    using File = std::unique_ptr<std::FILE, FileClose>;

    File input_{std::tmpfile()};
    File output_{std::tmpfile()};
    platform::host::ConsoleStreams streams_{fileno(input_.get()), fileno(output_.get())};
};
