#include "windows/calculators/RecordingServer.h"

#include <ole2.h>

#include <cstdio>
#include <string>

namespace {

constexpr wchar_t kOptionClass[] = L"{0C332960-AC64-11D7-B457-00D0B7BD012C}";
constexpr wchar_t kOptionInterface[] = L"{0C33295F-AC64-11D7-B457-00D0B7BD012C}";
constexpr wchar_t kMarginClass[] = L"{5B17F3FC-FBCD-4208-AF23-AA13B4717257}";
constexpr wchar_t kMarginInterface[] = L"{40A9F92B-445D-4154-8A74-5DF019FA5EE5}";

HINSTANCE module = nullptr;
std::string calls;
HRESULT answer = S_OK;
BOOL errorInfoWanted = FALSE;
double outputs = 0;  // each output place gets the next whole number

GUID idOf(const wchar_t* text) {
    GUID id = {};
    ::IIDFromString(text, &id);
    return id;
}

std::string narrow(const wchar_t* text, UINT length) {
    std::string result;
    for (UINT i = 0; i < length; ++i) result += static_cast<char>(text[i] < 256 ? text[i] : '?');
    return result;
}

// --- Writing down ---

void note(double number) {
    char text[40];
    std::snprintf(text, sizeof(text), " %.10g", number);
    calls += text;
}
void note(float number) {
    note(static_cast<double>(number));
    calls += "f";
}
void note(short number) { note(static_cast<double>(number)); }
void note(long number) { note(static_cast<double>(number)); }
void note(BSTR text) { calls += text ? " '" + narrow(text, ::SysStringLen(text)) + "'" : " null"; }
void note(double* output) {
    calls += output ? " out" : " null";
    if (output && SUCCEEDED(answer)) *output = ++outputs;
}

void makeErrorInfo(const wchar_t* interfaceText) {
    ICreateErrorInfo* creating = nullptr;
    IErrorInfo* info = nullptr;
    ::CreateErrorInfo(&creating);
    creating->SetGUID(idOf(interfaceText));
    creating->SetDescription(const_cast<wchar_t*>(L"refused by the recorder"));
    creating->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&info));
    ::SetErrorInfo(0, info);
    info->Release();
    creating->Release();
}

// --- Objects with hand-made tables of methods ---

using Method = void (*)();

struct Object {
    const Method* methods;
    const wchar_t* interfaceText;
    Object* errorSupport;  // the object's ISupportErrorInfo side; null on that side itself
};

template <class... Arguments>
HRESULT record(Object* self, const char* method, Arguments... arguments) {
    calls += method;
    (note(arguments), ...);
    calls += '\n';
    if (FAILED(answer) && errorInfoWanted) makeErrorInfo(self->interfaceText);
    return answer;
}

HRESULT STDMETHODCALLTYPE queryInterface(Object* self, REFIID iid, void** object) {
    const GUID own = idOf(self->interfaceText);
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == own) {
        *object = self;
        return S_OK;
    }
    *object = iid == IID_ISupportErrorInfo ? self->errorSupport : nullptr;
    return *object ? S_OK : E_NOINTERFACE;
}
ULONG STDMETHODCALLTYPE stay(Object*) { return 1; }
HRESULT STDMETHODCALLTYPE dispatchEntry(Object* self) { return record(self, "IDispatch entry:"); }

HRESULT STDMETHODCALLTYPE supportsErrorInfo(Object* self, REFIID iid) {
    wchar_t text[39] = L"";
    ::StringFromGUID2(iid, text, 39);
    calls += "error info of " + narrow(text, 38) + "\n";
    return iid == idOf(self->interfaceText) ? S_OK : S_FALSE;
}

template <class Function>
Method entry(Function* function) {
    return reinterpret_cast<Method>(function);
}

// A place that nobody should call.
template <int Position>
HRESULT STDMETHODCALLTYPE unexpected(Object* self) {
    return record(self, ("unexpected " + std::to_string(Position) + ":").c_str());
}

HRESULT STDMETHODCALLTYPE option1(Object* self, double a, double b, double c, double d, double e, double f, double g,
                                  short h, short i, short j, double* o1, double* o2, double* o3, double* o4, double* o5,
                                  double* o6) {
    return record(self, "option 1:", a, b, c, d, e, f, g, h, i, j, o1, o2, o3, o4, o5, o6);
}
HRESULT STDMETHODCALLTYPE option3(Object* self, double a, double b, double c, double d, double e, double f, double g,
                                  short h, double* o1) {
    return record(self, "option 3:", a, b, c, d, e, f, g, h, o1);
}
HRESULT STDMETHODCALLTYPE option4(Object* self, double a, double b, double c, double d, double e, short f, double g,
                                  double h, double* o1, double* o2, double* o3, double* o4, double* o5, double* o6) {
    return record(self, "option 4:", a, b, c, d, e, f, g, h, o1, o2, o3, o4, o5, o6);
}
HRESULT STDMETHODCALLTYPE margin2(Object* self) { return record(self, "margin 2:"); }
HRESULT STDMETHODCALLTYPE margin5(Object* self) { return record(self, "margin 5:"); }
HRESULT STDMETHODCALLTYPE margin6(Object* self, double* o) { return record(self, "margin 6:", o); }
HRESULT STDMETHODCALLTYPE margin10(Object* self, BSTR a, BSTR b, BSTR c) { return record(self, "margin 10:", a, b, c); }
HRESULT STDMETHODCALLTYPE margin11(Object* self, BSTR a, BSTR b, BSTR c) { return record(self, "margin 11:", a, b, c); }
HRESULT STDMETHODCALLTYPE margin14(Object* self, BSTR a, BSTR b, BSTR c, short d, BSTR e, BSTR f, short g, float h,
                                   long i) {
    const char* months = e != f ? "margin 14:" : "margin 14 (one text twice):";
    return record(self, months, a, b, c, d, e, f, g, h, i);
}
HRESULT STDMETHODCALLTYPE margin16(Object* self, short a, short b, double* o) {
    return record(self, "margin 16:", a, b, o);
}
HRESULT STDMETHODCALLTYPE margin18(Object* self, BSTR* o) {
    if (SUCCEEDED(answer)) *o = ::SysAllocString(L"the server's text");
    return record(self, "margin 18:");
}

const Method errorSupportMethods[] = {entry(queryInterface), entry(stay), entry(stay), entry(supportsErrorInfo)};

#define DISPATCH_ENTRIES                                                                                               \
    entry(queryInterface), entry(stay), entry(stay), entry(dispatchEntry), entry(dispatchEntry), entry(dispatchEntry), \
        entry(dispatchEntry)

const Method optionMethods[] = {DISPATCH_ENTRIES, entry(option1), entry(unexpected<2>),
                                entry(option3),   entry(option4), entry(unexpected<5>)};
const Method marginMethods[] = {DISPATCH_ENTRIES,      entry(unexpected<1>),  entry(margin2),  entry(unexpected<3>),
                                entry(unexpected<4>),  entry(margin5),        entry(margin6),  entry(unexpected<7>),
                                entry(unexpected<8>),  entry(unexpected<9>),  entry(margin10), entry(margin11),
                                entry(unexpected<12>), entry(unexpected<13>), entry(margin14), entry(unexpected<15>),
                                entry(margin16),       entry(unexpected<17>), entry(margin18), entry(unexpected<19>)};

Object optionErrors = {errorSupportMethods, kOptionInterface, nullptr};
Object marginErrors = {errorSupportMethods, kMarginInterface, nullptr};
Object optionObject = {optionMethods, kOptionInterface, &optionErrors};
Object marginObject = {marginMethods, kMarginInterface, &marginErrors};

// --- Class factories ---

HRESULT STDMETHODCALLTYPE createInstance(Object* factory, IUnknown*, REFIID iid, void** object);
HRESULT STDMETHODCALLTYPE lockServer(Object*, BOOL) { return S_OK; }
HRESULT STDMETHODCALLTYPE queryFactory(Object* self, REFIID, void** object) {
    *object = self;
    return S_OK;
}
const Method factoryMethods[] = {entry(queryFactory), entry(stay), entry(stay), entry(createInstance),
                                 entry(lockServer)};
Object optionFactory = {factoryMethods, nullptr, nullptr};
Object marginFactory = {factoryMethods, nullptr, nullptr};

HRESULT STDMETHODCALLTYPE createInstance(Object* factory, IUnknown*, REFIID iid, void** object) {
    return queryInterface(factory == &optionFactory ? &optionObject : &marginObject, iid, object);
}

// --- Registration ---

std::wstring keyOf(const wchar_t* classText) { return std::wstring(L"Software\\Classes\\CLSID\\") + classText; }

bool enter(const wchar_t* classText, const wchar_t* path) {
    const std::wstring key = keyOf(classText) + L"\\InprocServer32";
    const auto bytes = static_cast<DWORD>((std::wstring(path).size() + 1) * sizeof(wchar_t));
    return ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, REG_SZ, path, bytes) == ERROR_SUCCESS;
}

}  // namespace

extern "C" {

const char* recordedCalls() { return calls.c_str(); }

void answerWith(HRESULT hr, BOOL errorInfo) {
    calls.clear();
    answer = hr;
    errorInfoWanted = errorInfo;
    outputs = 0;
}

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) module = instance;
    return TRUE;
}

HRESULT WINAPI DllGetClassObject(REFCLSID classId, REFIID, void** object) {
    *object = classId == idOf(kOptionClass) ? &optionFactory : classId == idOf(kMarginClass) ? &marginFactory : nullptr;
    return *object ? S_OK : CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT WINAPI DllCanUnloadNow() { return S_FALSE; }

HRESULT WINAPI DllRegisterServer() {
    wchar_t path[MAX_PATH] = L"";
    ::GetModuleFileNameW(module, path, MAX_PATH);
    return enter(kOptionClass, path) && enter(kMarginClass, path) ? S_OK : E_FAIL;
}

HRESULT WINAPI DllUnregisterServer() {
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, keyOf(kOptionClass).c_str());
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, keyOf(kMarginClass).c_str());
    return S_OK;
}

}  // extern "C"
