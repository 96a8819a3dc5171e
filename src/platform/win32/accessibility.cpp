#include "platform/win32/accessibility.h"

#include <windows.h>

#include <objbase.h>
#include <oleacc.h>

#include <atomic>
#include <string>

#include "platform/win32/toolkit.h"

namespace platform {
namespace {

// The libraries are slow to load, and most users never need them.
template <class Function>
Function* OfLibrary(const wchar_t* library, const char* name) {
    const HMODULE module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

struct Libraries {
    decltype(CoInitializeEx)* Initialize =
        OfLibrary<decltype(CoInitializeEx)>(L"ole32.dll", "CoInitializeEx");
    decltype(SysAllocStringLen)* MakeText =
        OfLibrary<decltype(SysAllocStringLen)>(L"oleaut32.dll", "SysAllocStringLen");
    decltype(CreateStdAccessibleObject)* Create =
        OfLibrary<decltype(CreateStdAccessibleObject)>(L"oleacc.dll", "CreateStdAccessibleObject");
    decltype(LresultFromObject)* Answer =
        OfLibrary<decltype(LresultFromObject)>(L"oleacc.dll", "LresultFromObject");

    Libraries() { Initialize(nullptr, COINIT_APARTMENTTHREADED); }
};
const Libraries& Loaded() {
    static const Libraries libraries;
    return libraries;
}

Told Ask(HWND window) {
    if (const Control::Native* control = Control::Native::Of(window)) return control->Tell();
    Told told;
    if (const Form::Native* form = Form::Native::Of(window)) {
        told.Name = form->SpokenName;
        told.Role = form->Frame == FormFrame::None ? ROLE_SYSTEM_WINDOW : ROLE_SYSTEM_DIALOG;
    }
    return told;
}

HRESULT Give(const std::wstring& text, BSTR* result) {
    *result = Loaded().MakeText(text.data(), static_cast<UINT>(text.size()));
    return *result == nullptr ? E_OUTOFMEMORY : S_OK;
}

// What the system tells of a window, with what the program knows better. Windows have no parts here, so every
// question is about the window itself. It may outlive the window.
class Accessible : public IAccessible {
 public:
    Accessible(HWND window, IAccessible& system) : window_(window), system_(system) {}
    virtual ~Accessible() { system_.Release(); }
    Accessible(const Accessible&) = delete;
    Accessible& operator=(const Accessible&) = delete;

    STDMETHODIMP QueryInterface(REFIID wanted, void** result) override {
        if (wanted != __uuidof(IUnknown) && wanted != __uuidof(IDispatch) && wanted != __uuidof(IAccessible))
            return system_.QueryInterface(wanted, result);
        *result = static_cast<IAccessible*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    STDMETHODIMP get_accName(VARIANT child, BSTR* name) override {
        const std::wstring own = Ask(window_).Name;
        return own.empty() ? system_.get_accName(child, name) : Give(own, name);
    }
    STDMETHODIMP get_accDescription(VARIANT child, BSTR* description) override {
        const std::wstring own = Ask(window_).Description;
        return own.empty() ? system_.get_accDescription(child, description) : Give(own, description);
    }
    STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override {
        const std::wstring own = Ask(window_).Value;
        return own.empty() ? system_.get_accValue(child, value) : Give(own, value);
    }
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override {
        const long own = Ask(window_).Role;
        if (own == 0) return system_.get_accRole(child, role);
        role->vt = VT_I4;
        role->lVal = own;
        return S_OK;
    }
    STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override {
        const HRESULT result = system_.get_accState(child, state);
        if (result == S_OK && state->vt == VT_I4) state->lVal |= Ask(window_).State;
        return result;
    }
    STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override {
        const std::wstring own = Ask(window_).Action;
        return own.empty() ? system_.get_accDefaultAction(child, action) : Give(own, action);
    }
    STDMETHODIMP accDoDefaultAction(VARIANT child) override {
        const Control::Native* control = Control::Native::Of(window_);
        if (control == nullptr || Ask(window_).Action.empty()) return system_.accDoDefaultAction(child);
        control->PressLater();
        return S_OK;
    }

    // What the system knows as well as the program.
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return system_.GetTypeInfoCount(count); }
    STDMETHODIMP GetTypeInfo(UINT which, LCID locale, ITypeInfo** info) override {
        return system_.GetTypeInfo(which, locale, info);
    }
    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) override {
        return system_.GetIDsOfNames(reserved, names, count, locale, ids);
    }
    STDMETHODIMP Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* wrong) override {
        return system_.Invoke(member, reserved, locale, flags, parameters, result, exception, wrong);
    }
    STDMETHODIMP get_accParent(IDispatch** parent) override { return system_.get_accParent(parent); }
    STDMETHODIMP get_accChildCount(long* count) override { return system_.get_accChildCount(count); }
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** result) override {
        return system_.get_accChild(child, result);
    }
    STDMETHODIMP put_accName(VARIANT child, BSTR name) override { return system_.put_accName(child, name); }
    STDMETHODIMP put_accValue(VARIANT child, BSTR value) override {
        return system_.put_accValue(child, value);
    }
    STDMETHODIMP get_accHelp(VARIANT child, BSTR* help) override { return system_.get_accHelp(child, help); }
    STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override {
        return system_.get_accHelpTopic(file, child, topic);
    }
    STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* key) override {
        return system_.get_accKeyboardShortcut(child, key);
    }
    STDMETHODIMP get_accFocus(VARIANT* child) override { return system_.get_accFocus(child); }
    STDMETHODIMP get_accSelection(VARIANT* children) override { return system_.get_accSelection(children); }
    STDMETHODIMP accSelect(long flags, VARIANT child) override {
        const Control::Native* control = Control::Native::Of(window_);
        if (flags != SELFLAG_TAKEFOCUS || control == nullptr || !control->TakesFocus())
            return system_.accSelect(flags, child);
        SetFocus(window_);
        return S_OK;
    }
    STDMETHODIMP accLocation(long* left, long* top, long* width, long* height, VARIANT child) override {
        return system_.accLocation(left, top, width, height, child);
    }
    STDMETHODIMP accNavigate(long direction, VARIANT start, VARIANT* end) override {
        return system_.accNavigate(direction, start, end);
    }
    STDMETHODIMP accHitTest(long left, long top, VARIANT* child) override {
        return system_.accHitTest(left, top, child);
    }

 private:
    const HWND window_;
    IAccessible& system_;
    std::atomic<ULONG> references_ = 1;
};

}  // namespace

LRESULT AnswerAssistant(HWND window, WPARAM wParam) {
    void* system = nullptr;
    if (Loaded().Create(window, OBJID_CLIENT, __uuidof(IAccessible), &system) != S_OK) return 0;
    auto* accessible = new Accessible(window, *static_cast<IAccessible*>(system));
    const LRESULT result = Loaded().Answer(__uuidof(IAccessible), wParam, accessible);
    accessible->Release();
    return result;
}

}  // namespace platform
