#include <windows.h>
// Behind windows.h, which it needs.
#include <oaidl.h>
#include <objbase.h>
#include <olectl.h>

#include <array>
#include <string>

// An in-process server of one object, which can be created and has no members. The build gives its programmatic
// identifier (OBJECT_IDENTIFIER) and the end of its class identifier (OBJECT_CLASS_TAIL).

namespace {

constexpr CLSID ObjectClass = {
    0x3C0E5F0A, 0x52B4, 0x4E0E, {0x8D, 0x5E, 0x9C, 0x1B, 0x6A, 0x7F, 0x21, OBJECT_CLASS_TAIL}};
constexpr const wchar_t* ObjectIdentifier = OBJECT_IDENTIFIER;

// Objects and locks that keep the library loaded. The object and its factory have no state, so that there is one of
// each and a reference is no more than a count.
LONG references = 0;
HINSTANCE library = nullptr;

HRESULT Offer(IUnknown* object, bool implemented, void** result) {
    *result = implemented ? object : nullptr;
    if (!implemented) {
        return E_NOINTERFACE;
    }
    object->AddRef();
    return S_OK;
}

class Object final : public IDispatch {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** result) override {
        return Offer(this, wanted == IID_IUnknown || wanted == IID_IDispatch, result);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references)); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(InterlockedDecrement(&references)); }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return DISP_E_MEMBERNOTFOUND;
    }
};

class Factory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** result) override {
        return Offer(this, wanted == IID_IUnknown || wanted == IID_IClassFactory, result);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references)); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(InterlockedDecrement(&references)); }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID wanted, void** result) override {
        static Object object;
        *result = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : object.QueryInterface(wanted, result);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        lock != FALSE ? AddRef() : Release();
        return S_OK;
    }
};

std::wstring ClassText() {
    std::array<wchar_t, 39> text{};  // 38 characters and a zero
    StringFromGUID2(ObjectClass, text.data(), static_cast<int>(text.size()));
    return text.data();
}

LSTATUS SetText(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
    return RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, text.c_str(),
                           static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        library = instance;
    }
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID wantedClass, REFIID wanted, void** result) {
    static Factory factory;
    *result = nullptr;
    return wantedClass == ObjectClass ? factory.QueryInterface(wanted, result) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    return references == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    std::array<wchar_t, MAX_PATH> path{};
    const DWORD length = GetModuleFileNameW(library, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0 || length == path.size()) {
        return SELFREG_E_CLASS;
    }
    const std::wstring classKey = L"CLSID\\" + ClassText();
    const std::wstring identifier = ObjectIdentifier;
    const bool stored = SetText(identifier, nullptr, identifier) == ERROR_SUCCESS &&
                        SetText(identifier + L"\\CLSID", nullptr, ClassText()) == ERROR_SUCCESS &&
                        SetText(classKey, nullptr, identifier) == ERROR_SUCCESS &&
                        SetText(classKey + L"\\ProgID", nullptr, identifier) == ERROR_SUCCESS &&
                        SetText(classKey + L"\\InprocServer32", nullptr, path.data()) == ERROR_SUCCESS &&
                        SetText(classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment") == ERROR_SUCCESS;
    return stored ? S_OK : SELFREG_E_CLASS;
}

STDAPI DllUnregisterServer() {
    for (const std::wstring& key : {L"CLSID\\" + ClassText(), std::wstring(ObjectIdentifier)}) {
        const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
            return SELFREG_E_CLASS;
        }
    }
    return S_OK;
}
