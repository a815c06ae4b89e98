#include "installcheck/modPathGet.h"

#include "common/modStringLibrary.h"
#include "platform/FileCalls.h"
#include "platform/Regional.h"

// A path that ends with a backslash never counts as a file, whatever a directory search would find.
bool FileExists(const Text& path) {
    return !PathFileName(path).empty() && !platform::FindNormalFile(platform::AnsiFromText(path)).empty();
}
