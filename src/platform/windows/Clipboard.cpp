#include <cstring>
#include <memory>

#include "platform/WindowSystem.h"
#include "platform/windows/Win32.h"

namespace platform {

namespace {

// Another program holds the clipboard for moments only.
constexpr int OpenTries = 10;
constexpr DWORD OpenPause = 20;  // milliseconds

struct WindowRelease {
    void operator()(HWND__* window) const { ::DestroyWindow(window); }
};

struct GlobalMemoryFree {
    void operator()(void* memory) const { ::GlobalFree(memory); }
};

// The open clipboard. It takes data only from a window, which nobody sees.
class Clipboard {
public:
    Clipboard()
        : owner_(::CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
        for (int tries = 0; tries < OpenTries && !open_; ++tries) {
            if (tries != 0) {
                ::Sleep(OpenPause);
            }
            open_ = ::OpenClipboard(owner_.get()) != FALSE;
        }
    }
    ~Clipboard() {
        if (open_) {
            ::CloseClipboard();
        }
    }
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;

    [[nodiscard]] bool IsOpen() const { return open_; }

private:
    std::unique_ptr<HWND__, WindowRelease> owner_;
    bool open_ = false;
};

}  // namespace

bool ClipboardClear() {
    const Clipboard clipboard;
    return clipboard.IsOpen() && ::EmptyClipboard();
}

bool ClipboardSet(const std::string& text, std::uint32_t format) {
    const Clipboard clipboard;
    // What is there in other formats says something else and would be pasted instead.
    if (!clipboard.IsOpen() || !::EmptyClipboard()) {
        return false;
    }
    std::unique_ptr<void, GlobalMemoryFree> memory(::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1));
    void* const bytes = ::GlobalLock(memory.get());
    if (bytes == nullptr) {
        return false;
    }
    std::memcpy(bytes, text.c_str(), text.size() + 1);
    ::GlobalUnlock(memory.get());
    if (::SetClipboardData(format, memory.get()) == nullptr) {
        return false;
    }
    static_cast<void>(memory.release());  // the system's now
    return true;
}

}  // namespace platform
