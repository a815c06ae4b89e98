#pragma once

#include <array>
#include <cstdio>
#include <memory>

struct FileClose {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// Opens a file by its path in the building system's own way and reads it to its end, and nothing else. False when that
// cannot be done.
inline bool OpenAndRead(const char* path) {
    static std::array<char, 65536> buffer;
    const std::unique_ptr<std::FILE, FileClose> file(std::fopen(path, "rb"));
    if (file == nullptr) {
        return false;
    }
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    while (std::fread(buffer.data(), 1, buffer.size(), file.get()) == buffer.size()) {
    }
    return std::ferror(file.get()) == 0;
}
