#pragma once

#include <string>

// The unnamed value of a key below HKEY_CLASSES_ROOT.
std::string ClassText(const std::string& key);
void ClassText(const std::string& key, const std::string& text);

// The editor of text files while a case runs, or none at all. It notes what it is asked to open and ends at once. The
// machine's own association is back at the end.
class Editor {
public:
    enum class Kind { Noting, None };

    explicit Editor(Kind kind);
    ~Editor();
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    // The path of the next file opened, once it is; the empty text when none is.
    [[nodiscard]] std::string NextOpened();
    [[nodiscard]] bool Idle() const;

private:
    std::string earlierClass_;
};

// True in a process that was started as the editor; it has noted its file then.
bool EditorStarted(int argc, char** argv);
