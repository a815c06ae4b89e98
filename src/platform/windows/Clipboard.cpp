#include <cstring>
#include <string_view>

#include "platform/WindowSystem.h"
#include "platform/windows/Win32.h"

namespace platform {

namespace {

// Another program holds the clipboard for moments only.
constexpr int OpenTries = 10;
constexpr DWORD OpenPause = 20;  // milliseconds

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

    // What is there says something else, and a format of it might be pasted instead of what comes.
    bool Clear() { return open_ && ::EmptyClipboard() != FALSE; }

    bool Add(UINT format, std::string_view bytes) {
        windows::Owned<HGLOBAL, ::GlobalFree> memory(::GlobalAlloc(GMEM_MOVEABLE, bytes.size()));
        void* const place = ::GlobalLock(memory.get());
        if (place == nullptr) {
            return false;
        }
        std::memcpy(place, bytes.data(), bytes.size());
        ::GlobalUnlock(memory.get());
        if (::SetClipboardData(format, memory.get()) == nullptr) {
            return false;
        }
        static_cast<void>(memory.release());  // the system's now
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

// A text without a locale gets the one of the keyboard's language, by whose code page programs would read it.
bool ClipboardSet(const std::string& text, std::uint32_t format) {
    const LCID locale = ::GetSystemDefaultLCID();  // its code page is the 8-bit one
    Clipboard clipboard;
    return clipboard.Clear() && clipboard.Add(CF_LOCALE, {reinterpret_cast<const char*>(&locale), sizeof locale}) &&
           clipboard.Add(format, {text.c_str(), text.size() + 1});
}

}  // namespace platform
