#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The running process and its program file.
namespace platform {

// Hands over the argument vector, as the first thing in `main`, for systems that keep the command line nowhere else.
void ProcessStart(int argumentCount, char** arguments);

// The text of the command line behind the program's name: blanks and quotes as the caller of the program gave them.
std::u16string CommandLineTail();

// The arguments behind the program's name, one by one.
std::vector<std::u16string> CommandLineArguments();

inline constexpr std::int32_t StdOutputHandle = -11;  // STD_OUTPUT_HANDLE
inline constexpr std::int32_t StdErrorHandle = -12;   // STD_ERROR_HANDLE

// Writes to standard output or standard error: on a console as it is, else in the system's 8-bit code page; on a host
// in UTF-8. What cannot be written is lost.
void WriteConsoleW(std::int32_t stream, const std::u16string& text);

// The environment variable `name` in the system's 8-bit code page; the empty text when it is unset.
std::string GetEnvironmentVariableA(const std::string& name);

// The present local time as a date value: days since 30 December 1899, the time of day as the fraction.
double Now();

// What the version block of the running program says of it.
struct ProgramVersion {
    std::u16string fileDescription;
    std::u16string legalCopyright;
    std::uint16_t major;
    std::uint16_t minor;
    std::uint16_t revision;
};

// Read at each call. A program without a version block gives empty texts and zeros.
ProgramVersion ProgramVersionGet();

// The folder of the running program, in the system's 8-bit code page, without a backslash behind it unless it is a
// drive's root.
std::string ProgramFolder();

}  // namespace platform
