#pragma once

#include <cstdint>
#include <optional>

#include "common/Text.h"

// Opens documents with their associated programs, and runs command lines.

// Opens a document without waiting for its program. On failure raises the system's result code with the description
// from ShellErrorText. If `path` ends in ":", appends a backslash to the caller's variable.
void ShellOpen(Text& path);

// Like ShellOpen, but returns the system's result code, which is 33 or more on success.
std::int32_t ShellOpenDocument(Text& path);

// Starts a command line, minimised and activated, and waits until the process exits or `timeOut` milliseconds have
// passed (default: no limit). After a timeout, the process keeps running. Returns platform::WaitObject0, WaitTimeout or
// WaitFailed. Raises 53 if the program is missing, 5 if the program can't be started.
std::uint32_t ShellAndWait(const Text& command, std::optional<std::uint32_t> timeOut = {});

// Returns the description of a result code, or an empty string for 33 or more.
Text ShellErrorText(std::int32_t code);
