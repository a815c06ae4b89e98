#pragma once

#include <iostream>
#include <sstream>
#include <string>

// Redirects standard input and output for its lifetime: dialogs read the given lines, and their output is collected.
class LineRun {
public:
    explicit LineRun(const std::string& input) : input_(input) {
        std::cin.clear();
        earlierInput_ = std::cin.rdbuf(input_.rdbuf());
        earlierOutput_ = std::cout.rdbuf(output_.rdbuf());
    }
    ~LineRun() {
        std::cin.rdbuf(earlierInput_);
        std::cout.rdbuf(earlierOutput_);
    }
    LineRun(const LineRun&) = delete;
    LineRun& operator=(const LineRun&) = delete;

    [[nodiscard]] std::string Output() const { return output_.str(); }
    [[nodiscard]] bool Shows(const std::string& text) const { return Output().find(text) != std::string::npos; }

private:
    std::istringstream input_;
    std::ostringstream output_;
    std::streambuf* earlierInput_;
    std::streambuf* earlierOutput_;
};
