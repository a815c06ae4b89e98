#pragma once

#include <vector>

#include "common/Text.h"
#include "version/VersionResolution.h"

enum class Command { Help, Check, Export, Import, Who };

// The parsed command line. Paths that weren't given are empty.
struct Arguments {
    Command command = Command::Help;
    Text controlFile;
    Text target;       // a path that ends in ".reg" or ".xml"
    Text earlierFile;  // the control file of the previous rollout
    UserNames user;
};

// True if the path ends in ".xml" (case-insensitive).
bool IsXmlPath(const Text& path);

// Parses the command line. User names that aren't given are taken from the environment. Raises 5 (invalid argument),
// with a German description, if the command line is invalid.
Arguments ParseArguments(const std::vector<Text>& arguments);
