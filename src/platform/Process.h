#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The running process and its program file.
namespace platform {

// Prepares the process. Must be the first call in `main`, because the host has no other access to the command line.
void ProcessStart(int argumentCount, char** arguments);

// Returns the command line after the program name, with spaces and quotes unchanged.
std::u16string CommandLineTail();

// Returns the arguments after the program name.
std::vector<std::u16string> CommandLineArguments();

inline constexpr std::int32_t StdOutputHandle = -11;  // STD_OUTPUT_HANDLE
inline constexpr std::int32_t StdErrorHandle = -12;   // STD_ERROR_HANDLE

// Writes to standard output or standard error. On Windows, writes Unicode to a console and the system's 8-bit code page
// to anything else; on the host, writes UTF-8. Ignores write errors.
void WriteConsoleW(std::int32_t stream, const std::u16string& text);

// Returns the environment variable `name` in the system's 8-bit code page, or an empty string if it isn't set.
std::string GetEnvironmentVariableA(const std::string& name);

// Returns the current local time as a date value: days since 30 December 1899, with the time of day as the fraction.
double Now();

// The version resource of the running program.
struct ProgramVersion {
    std::u16string fileDescription;
    std::u16string legalCopyright;
    std::uint16_t major;
    std::uint16_t minor;
    std::uint16_t revision;
};

// Reads the version resource. If there is none, returns empty strings and zeros.
ProgramVersion ProgramVersionGet();

// Returns the folder of the running program in the system's 8-bit code page. The path ends with a backslash only if the
// folder is the root of a drive.
std::string ProgramFolder();

}  // namespace platform
