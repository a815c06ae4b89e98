#include <cstring>
#include <string_view>

#include "platform/Regional.h"
#include "platform/WindowSystem.h"
#include "platform/windows/Win32.h"

namespace platform {

namespace {

// Other programs hold the clipboard open only briefly, so retry.
constexpr int OpenTries = 10;
constexpr DWORD OpenPause = 20;  // in milliseconds

// Opens the clipboard and closes it on destruction. Setting data requires an owner window, so the constructor creates a
// message-only window.
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

    // Removes the previous content in all formats; otherwise a program might paste old content in another format.
    bool Clear() { return open_ && ::EmptyClipboard() != FALSE; }

    bool Add(UINT format, std::string_view bytes) {
        windows::Owned<HGLOBAL, ::GlobalFree> memory(::GlobalAlloc(GMEM_MOVEABLE, bytes.size()));
        void* const target = ::GlobalLock(memory.get());
        if (target == nullptr) {
            return false;
        }
        std::memcpy(target, bytes.data(), bytes.size());
        ::GlobalUnlock(memory.get());
        if (::SetClipboardData(format, memory.get()) == nullptr) {
            return false;
        }
        static_cast<void>(memory.release());  // now owned by the system
        return true;
    }

private:
    windows::Owned<HWND, ::DestroyWindow> owner_;
    bool open_ = false;
};

}  // namespace

bool ClipboardClear() {
    return Clipboard().Clear();
}

// Also adds the text in UTF-16. Otherwise, for programs that paste UTF-16, Windows would convert the text with the code
// page of the keyboard layout, which may differ from the system code page.
bool ClipboardSet(const std::string& text, std::uint32_t format) {
    const std::u16string unicode = TextFromAnsi(text);
    Clipboard clipboard;
    return clipboard.Clear() && clipboard.Add(format, {text.c_str(), text.size() + 1}) &&
           clipboard.Add(CF_UNICODETEXT, {reinterpret_cast<const char*>(unicode.c_str()), (unicode.size() + 1) * 2});
}

}  // namespace platform
