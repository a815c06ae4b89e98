#include "installcheck/modPathGet.h"

#include "common/modStringLibrary.h"
#include "platform/FileCalls.h"
#include "platform/Regional.h"

bool FileExists(const Text& path) {
    return !FilePathStored(path).empty();
}

Text FilePathStored(const Text& path) {
    const Text name = PathFileName(path);
    // A search for a path that ends in a backslash would find a file in that folder.
    if (name.empty()) {
        return {};
    }
    const Text stored = platform::TextFromAnsi(platform::FindNormalFile(platform::AnsiFromText(path)));
    return stored.empty() ? stored : path.substr(0, path.size() - name.size()) + stored;
}
