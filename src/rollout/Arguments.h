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
    Text earlierFile;  // the control file of the last roll-out
    UserNames user;
};

// True if the path ends in ".xml", in any letter case.
bool IsXmlPath(const Text& path);

// Parses the command line. User names that weren't given are those of the environment. Raises 5 (invalid argument) with
// a German description.
Arguments ParseArguments(const std::vector<Text>& arguments);
