#pragma once

#include <cstdint>
#include <optional>

#include "common/Text.h"

// Starts things through the system: a document with the program of its type, and a command line.

// Opens a document, and does not wait for its program. Raises the result code of a failure, described by
// ShellErrorText. A `path` that ends in ":" is given a backslash, in the caller's variable.
void ShellOpen(Text& path);

// The same, giving the system's result code: 33 and above is success.
std::int32_t ShellOpenDocument(Text& path);

// Starts a command line, minimised and with the focus, and waits for its end, by default without a limit and otherwise
// no longer than `timeOut` milliseconds; the process goes on after that. Gives platform::WaitObject0, WaitTimeout or
// WaitFailed. Raises the error of a start that failed.
std::uint32_t ShellAndWait(const Text& command, std::optional<std::uint32_t> timeOut = {});

// The text for a result code below 33; the empty text for success.
Text ShellErrorText(std::int32_t code);
