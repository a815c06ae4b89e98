#include "installcheck/modFileData.h"

#include "platform/FileCalls.h"
#include "platform/Regional.h"

std::optional<File> FileGet(const Text& path) {
    double days = 0;
    if (platform::DateLastModified(platform::AnsiFromText(path), days) != platform::StatusSuccess) {
        return {};
    }
    return File{Date{days}};
}

Variant FileDateGet(const Text& path) {
    const std::optional<File> file = FileGet(path);
    return file ? Variant(file->dateLastModified) : Variant(Null{});
}
