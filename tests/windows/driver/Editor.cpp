#include "Editor.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "Desktop.h"

namespace {

constexpr char Extension[] = ".txt";
constexpr char NotingClass[] = "vtv4v.driver";
constexpr char EditorOption[] = "--edit";

std::string DriverPath() {
    std::string path(MAX_PATH, '\0');
    path.resize(::GetModuleFileNameA(nullptr, path.data(), MAX_PATH));
    return path;
}

std::filesystem::path Note() {
    return std::filesystem::temp_directory_path() / "vtv4v-driver-opened";
}

}  // namespace

std::string ClassText(const std::string& key) {
    std::string value(MAX_PATH, '\0');
    DWORD size = MAX_PATH;
    if (::RegGetValueA(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, value.data(), &size) != 0) {
        return {};
    }
    return value.c_str();
}

void ClassText(const std::string& key, const std::string& text) {
    ::RegSetKeyValueA(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, text.c_str(),
                      static_cast<DWORD>(text.size() + 1));
}

Editor::Editor(Kind kind) : earlierClass_(ClassText(Extension)) {
    std::filesystem::remove(Note());
    ClassText(Extension, kind == Kind::Noting ? NotingClass : "vtv4v.none");
    ClassText(std::string(NotingClass) + "\\shell\\open\\command",
              "\"" + DriverPath() + "\" " + EditorOption + " \"%1\"");
}

Editor::~Editor() {
    ClassText(Extension, earlierClass_);
    ::RegDeleteTreeA(HKEY_CLASSES_ROOT, NotingClass);
    std::error_code ignored;
    std::filesystem::remove(Note(), ignored);
}

std::string Editor::NextOpened() {
    std::string opened;
    Eventually([&] {
        std::ifstream file(Note());
        opened.assign(std::istreambuf_iterator<char>(file), {});
        return !opened.empty();
    });
    std::filesystem::remove(Note());
    return opened;
}

bool Editor::Idle() const {
    return !std::filesystem::exists(Note());
}

// The note appears whole: it takes its name when it is written.
bool EditorStarted(int argc, char** argv) {
    if (argc != 3 || std::string(argv[1]) != EditorOption) {
        return false;
    }
    const std::filesystem::path beside = Note().string() + ".new";
    std::ofstream(beside) << argv[2];
    std::filesystem::rename(beside, Note());
    return true;
}
