#include "installcheck/modPathGet.h"

#include "common/modStringLibrary.h"
#include "platform/FileCalls.h"
#include "platform/Regional.h"

bool FileExists(const Text& path) {
    // A search for a path that ends in a backslash would find a file in that folder.
    return !PathFileName(path).empty() && !platform::FindNormalFile(platform::AnsiFromText(path)).empty();
}
