#pragma once

#include "common/Text.h"

// When this release of the program was made, as the report shows it. Set anew for each release.
Text ReleaseDate();
Text ReleaseTime();
