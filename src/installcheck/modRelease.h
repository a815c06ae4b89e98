#pragma once

#include "common/Text.h"

// Return the release date and time shown in the report. Update both for each release.
inline Text ReleaseDate() {
    return u"16.12.2017";
}
inline Text ReleaseTime() {
    return u"10:16:40";
}
