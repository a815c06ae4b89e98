#include "installcheck/modPathGet.h"

#include "common/modStringLibrary.h"
#include "platform/FileCalls.h"
#include "platform/Regional.h"

// A path that ends in a backslash is never a file: that is the rule here, whatever a search for it would find.
bool FileExists(const Text& path) {
    return !PathFileName(path).empty() && !platform::FindNormalFile(platform::AnsiFromText(path)).empty();
}
