#include "common/Environment.h"

#include "platform/Process.h"
#include "platform/Regional.h"

Text EnvironmentVariable(const Text& name) {
    return platform::TextFromAnsi(platform::GetEnvironmentVariableA(platform::AnsiFromText(name)));
}
