#pragma once

#include <filesystem>
#include <string>

namespace platform::host {

// The program file that a command line's first argument (8-bit code page) names: a path in a drive; a path of the host,
// which begins with "/"; or a bare name, looked up in C:\Windows\System32, in C:\Windows, and on the host's PATH. In a
// drive the endings ".exe", ".com" and ".bat" may be left out or stand where the file has none. Sets `program` and
// returns 0; ENOENT when there is none, EACCES when there is one that may not be run.
int FindProgram(const std::string& name, std::filesystem::path& program);

}  // namespace platform::host
