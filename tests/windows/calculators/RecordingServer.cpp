#include "windows/calculators/RecordingServer.h"

#include <cstdio>
#include <ole2.h>
#include <utility>

namespace {

constexpr wchar_t kOptionClass[] = L"{0C332960-AC64-11D7-B457-00D0B7BD012C}";
constexpr wchar_t kOptionInterface[] = L"{0C33295F-AC64-11D7-B457-00D0B7BD012C}";
constexpr wchar_t kMarginClass[] = L"{5B17F3FC-FBCD-4208-AF23-AA13B4717257}";
constexpr wchar_t kMarginInterface[] = L"{40A9F92B-445D-4154-8A74-5DF019FA5EE5}";

std::string calls;
HRESULT answer = S_OK;
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

// ---- Writing down

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

// ---- Objects with hand-made tables of methods

using Method = void (*)();

struct Object {
    const Method* methods;
    const wchar_t* interfaceText;
};

template <class... Arguments>
HRESULT record(const char* method, Arguments... arguments) {
    calls += method;
    (note(arguments), ...);
    calls += '\n';
    return answer;
}

HRESULT STDMETHODCALLTYPE queryInterface(Object* self, REFIID iid, void** object) {
    const GUID own = idOf(self->interfaceText);
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == own) {
        *object = self;
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}
ULONG STDMETHODCALLTYPE stay(Object*) { return 1; }
HRESULT STDMETHODCALLTYPE dispatchEntry(Object*) { return record("IDispatch entry:"); }

template <class Function>
Method entry(Function* function) {
    return reinterpret_cast<Method>(function);
}

// A place that nobody should call.
template <int Position>
HRESULT STDMETHODCALLTYPE unexpected(Object*) {
    return record(("unexpected " + std::to_string(Position) + ":").c_str());
}

HRESULT STDMETHODCALLTYPE option1(Object*, double a, double b, double c, double d, double e, double f, double g,
                                  short h, short i, short j, double* o1, double* o2, double* o3, double* o4, double* o5,
                                  double* o6) {
    return record("option 1:", a, b, c, d, e, f, g, h, i, j, o1, o2, o3, o4, o5, o6);
}
HRESULT STDMETHODCALLTYPE option3(Object*, double a, double b, double c, double d, double e, double f, double g,
                                  short h, double* o1) {
    return record("option 3:", a, b, c, d, e, f, g, h, o1);
}
HRESULT STDMETHODCALLTYPE option4(Object*, double a, double b, double c, double d, double e, short f, double g,
                                  double h, double* o1, double* o2, double* o3, double* o4, double* o5, double* o6) {
    return record("option 4:", a, b, c, d, e, f, g, h, o1, o2, o3, o4, o5, o6);
}
HRESULT STDMETHODCALLTYPE margin2(Object*) { return record("margin 2:"); }
HRESULT STDMETHODCALLTYPE margin5(Object*) { return record("margin 5:"); }
HRESULT STDMETHODCALLTYPE margin6(Object*, double* o) { return record("margin 6:", o); }
HRESULT STDMETHODCALLTYPE margin10(Object*, BSTR a, BSTR b, BSTR c) { return record("margin 10:", a, b, c); }
HRESULT STDMETHODCALLTYPE margin11(Object*, BSTR a, BSTR b, BSTR c) { return record("margin 11:", a, b, c); }
HRESULT STDMETHODCALLTYPE margin14(Object*, BSTR a, BSTR b, BSTR c, short d, BSTR e, BSTR f, short g, float h, long i) {
    const char* months = e != f ? "margin 14:" : "margin 14 (one text twice):";
    return record(months, a, b, c, d, e, f, g, h, i);
}
HRESULT STDMETHODCALLTYPE margin16(Object*, short a, short b, double* o) { return record("margin 16:", a, b, o); }
HRESULT STDMETHODCALLTYPE margin18(Object*, BSTR* o) {
    if (SUCCEEDED(answer)) *o = ::SysAllocString(L"the server's text");
    return record("margin 18:");
}

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

Object optionObject = {optionMethods, kOptionInterface};
Object marginObject = {marginMethods, kMarginInterface};

// ---- Class factories

HRESULT STDMETHODCALLTYPE createInstance(Object* factory, IUnknown*, REFIID iid, void** object);
HRESULT STDMETHODCALLTYPE lockServer(Object*, BOOL) { return S_OK; }
HRESULT STDMETHODCALLTYPE queryFactory(Object* self, REFIID, void** object) {
    *object = self;
    return S_OK;
}
const Method factoryMethods[] = {entry(queryFactory), entry(stay), entry(stay), entry(createInstance),
                                 entry(lockServer)};
Object optionFactory = {factoryMethods, nullptr};
Object marginFactory = {factoryMethods, nullptr};

HRESULT STDMETHODCALLTYPE createInstance(Object* factory, IUnknown*, REFIID iid, void** object) {
    return queryInterface(factory == &optionFactory ? &optionObject : &marginObject, iid, object);
}

}  // namespace

namespace test {

void serveRecording() {
    ::CoInitialize(nullptr);
    DWORD cookie = 0;
    for (const auto& [id, factory] : {std::pair(kOptionClass, &optionFactory), std::pair(kMarginClass, &marginFactory)})
        ::CoRegisterClassObject(idOf(id), reinterpret_cast<IUnknown*>(factory), CLSCTX_INPROC_SERVER,
                                REGCLS_MULTIPLEUSE, &cookie);
}

std::string recordedCalls() { return calls; }

void answerWith(HRESULT hr) {
    calls.clear();
    answer = hr;
    outputs = 0;
}

}  // namespace test
