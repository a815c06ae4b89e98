#include "installcheck/modRelease.h"

Text ReleaseDate() {
    return u"16.12.2017";
}

Text ReleaseTime() {
    return u"10:16:40";
}
