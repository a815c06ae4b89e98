#include <windows.h>
// These headers require windows.h.
#include <oaidl.h>
#include <objbase.h>
#include <olectl.h>

#include <array>
#include <string>

// An in-process COM server for a creatable object with no members. The build defines its ProgID (OBJECT_IDENTIFIER) and
// CLSID (OBJECT_CLASS).

namespace {

const std::wstring ObjectIdentifier = OBJECT_IDENTIFIER;
const std::wstring ObjectClass = OBJECT_CLASS;

// The number of references and locks that keep the library loaded. The object and its factory are stateless, so a
// single instance of each serves all references.
LONG references = 0;
HINSTANCE library = nullptr;

HRESULT Query(IUnknown* object, bool implemented, void** result) {
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
        return Query(this, wanted == IID_IUnknown || wanted == IID_IDispatch, result);
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
        return Query(this, wanted == IID_IUnknown || wanted == IID_IClassFactory, result);
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

LSTATUS SetString(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    return RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, value.c_str(),
                           static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
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
    CLSID objectClass{};
    const bool known = SUCCEEDED(CLSIDFromString(ObjectClass.c_str(), &objectClass)) && wantedClass == objectClass;
    return known ? factory.QueryInterface(wanted, result) : CLASS_E_CLASSNOTAVAILABLE;
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
    const std::wstring classKey = L"CLSID\\" + ObjectClass;
    const bool stored = SetString(ObjectIdentifier, nullptr, ObjectIdentifier) == ERROR_SUCCESS &&
                        SetString(ObjectIdentifier + L"\\CLSID", nullptr, ObjectClass) == ERROR_SUCCESS &&
                        SetString(classKey, nullptr, ObjectIdentifier) == ERROR_SUCCESS &&
                        SetString(classKey + L"\\ProgID", nullptr, ObjectIdentifier) == ERROR_SUCCESS &&
                        SetString(classKey + L"\\InprocServer32", nullptr, path.data()) == ERROR_SUCCESS &&
                        SetString(classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment") == ERROR_SUCCESS;
    return stored ? S_OK : SELFREG_E_CLASS;
}

STDAPI DllUnregisterServer() {
    for (const std::wstring& key : {L"CLSID\\" + ObjectClass, ObjectIdentifier}) {
        const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
            return SELFREG_E_CLASS;
        }
    }
    return S_OK;
}
