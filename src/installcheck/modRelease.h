#pragma once

#include "common/Text.h"

// Returns the release date and time shown in the report. Update both for each release.
Text ReleaseDate();
Text ReleaseTime();
