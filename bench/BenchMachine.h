#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

// An empty machine in a folder of its own, this process's machine until it ends.
class BenchMachine {
public:
    BenchMachine() : folder_((std::filesystem::temp_directory_path() / "vtv4v-bench-XXXXXX").native()) {
        if (mkdtemp(folder_.data()) == nullptr) {
            throw std::system_error(errno, std::generic_category(), folder_);
        }
        setenv("VTV4V_MACHINE", folder_.c_str(), 1);
    }
    ~BenchMachine() {
        unsetenv("VTV4V_MACHINE");
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    BenchMachine(const BenchMachine&) = delete;
    BenchMachine& operator=(const BenchMachine&) = delete;

    [[nodiscard]] std::filesystem::path Folder() const { return folder_; }

private:
    std::string folder_;
};
