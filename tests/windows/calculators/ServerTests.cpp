// The real calculation servers, as ./test registers them: through the library's wrappers, early bound by their vtables,
// and late bound by their type libraries.
#include "quor/calculators/QuorCOMWrapApp.h"
#include "quor/platform/Framework.h"
#include "quor/platform/win/ComError.h"
#include "servers/interfaces/CalculationServers.h"

#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

struct Releaser {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using Owned = std::unique_ptr<Interface, Releaser>;

template <class Interface>
Owned<Interface> newServer(const CLSID& classId, const IID& iid) {
    ::CoInitialize(nullptr);
    void* object = nullptr;
    EXPECT_EQ(::CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, iid, &object), S_OK)
        << "not registered? ./test does that";
    return Owned<Interface>(static_cast<Interface*>(object));
}

Owned<IOptionCalculator> newOptionServer() {
    return newServer<IOptionCalculator>(kOptionCalculatorClass, kOptionCalculatorInterface);
}
Owned<IMarginCalculator> newMarginServer() {
    return newServer<IMarginCalculator>(kMarginCalculatorClass, kMarginCalculatorInterface);
}

// The failure that a call throws; S_OK if it throws none. With the interface of the error info, null if there is none.
struct Thrown {
    HRESULT code = S_OK;
    GUID interfaceId = {};
    std::string sentence;
};

Thrown thrownBy(const std::function<void()>& call) {
    try {
        call();
    } catch (const _com_error& error) {
        const _bstr_t sentence = error.Description();
        return {error.Error(), error.GUID_(), sentence.length() ? static_cast<const char*>(sentence) : ""};
    }
    return {};
}

struct Servers : testing::Test {
    Servers() {
        static const bool created = [] {
            bool option = false, margin = false;
            quorCalculators().GetSpan(&option);
            quorCalculators().GetSpanCom(&margin);
            return option && margin;
        }();
        EXPECT_TRUE(created) << "not registered? ./test does that";
    }
    CQuorCOMWrapApp& app = quorCalculators();
};

// ---- Through the wrappers. What the servers compute is tested without COM; here it is what arrives and comes back.

// Price, delta, gamma, theta, vega, rho; -7 where nothing was written.
using Prices = std::array<double, 6>;

Prices pricesOf(const auto& call) {
    Prices o = {-7, -7, -7, -7, -7, -7};
    call(&o[0], &o[1], &o[2], &o[3], &o[4], &o[5]);
    return o;
}

TEST_F(Servers, MethodsAndFormulasAgree) {
    EXPECT_EQ(pricesOf([&](auto... o) { app.CalcPriceWra(42, 40, 0.5, 0.10, 0.08, 0.20, 0, 1, 0, 0, o...); }),
              pricesOf([&](auto... o) { app.CalculateBSPriceWra(42, 40, 0.5, 0.10, 0.20, 1, 0.08, 0, o...); }));
    const Prices put =
        pricesOf([&](auto... o) { app.CalcPriceWra(20, 20, 4.0 / 12, 0.09, 0, 0.25, 0, 1, 0, 0, o...); });
    const Prices blackPut =
        pricesOf([&](auto... o) { app.CalcBlack76ModelPutData(20, 0.09, 4.0 / 12, 0.25, 20, *o...); });
    for (std::size_t i = 0; i < put.size(); ++i) EXPECT_NEAR(put[i], blackPut[i], 1e-10) << i;

    double former = 0;
    for (const short kind : {0, 1, 2, 3}) {  // call, put, and the two with American exercise
        double volatility = 0;
        const double price = pricesOf(
            [&](auto... o) { app.CalcPriceWra(90, 100, 0.5, 0.06, 0.01, 0.25, 2, kind % 2, kind / 2, 0, o...); })[0];
        app.CalculateImpVolatilityWra(price, 90, 100, 0.5, 0.06, 0.01, 2, kind, &volatility);
        EXPECT_NEAR(volatility, 0.25, 1e-6) << kind;
        EXPECT_NE(price, std::exchange(former, price)) << kind;
    }
}

TEST_F(Servers, WhatTheOptionServerRefusesIsThrownAndWritesNothing) {
    Thrown refused;
    const Prices unwritten = pricesOf(
        [&](auto... o) { refused = thrownBy([&] { app.CalcPriceWra(-1, 100, 1, 0.05, 0, 0.2, 0, 0, 0, 0, o...); }); });
    for (const double one : unwritten) EXPECT_EQ(one, -7);
    double volatility = -7;
    const Thrown outside =
        thrownBy([&] { app.CalculateImpVolatilityWra(101, 100, 90, 1, 0.05, 0.05, 0, 0, &volatility); });
    EXPECT_EQ(volatility, -7);
    EXPECT_EQ(refused.code, E_INVALIDARG);
    EXPECT_EQ(outside.code, kOutsideBounds);
    for (const Thrown& each : {refused, outside}) {
        EXPECT_EQ(each.interfaceId, kOptionCalculatorInterface);
        EXPECT_FALSE(each.sentence.empty());
    }
}

// Without volatility and interest a call that is 10 in the money is worth 10, and a future loses its range of 9.
TEST_F(Servers, APortfolioIsSetUpCalculatedAndDeleted) {
    const auto refused = [this](const char* product) {
        return thrownBy([=, this] { app.SetPortfPositionWra("", "", product, 0, "2606", "", 73, 0, 10); }).code;
    };
    EXPECT_EQ(thrownBy([this] { app.SelectPortfolioWra(); }).code, HRESULT_FROM_WIN32(ERROR_NOT_FOUND));
    app.CreatePortfolioWra();
    app.SelectPortfolioWra();
    EXPECT_EQ(thrownBy([this] { app.CreatePortfolioWra(); }).code, HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS));
    EXPECT_EQ(refused("UNKNOWN"), E_INVALIDARG);
    const Thrown early = thrownBy([this] { app.GetPortfTotReqWra(); });
    EXPECT_EQ(early.code, kNotCalculated);
    EXPECT_EQ(early.interfaceId, kMarginCalculatorInterface);
    EXPECT_EQ(early.sentence, "The portfolio has not been calculated.");
    EXPECT_EQ(app.CalculateWra(), S_FALSE);
    app.SetPortfPositionWra("", "", "A,100,9,0,0,0,1", 0, "2606", "", 73, 0, 3);
    app.SetPortfPositionWra("", "", "B,100,9,0,0,0,1", 1, "2606", "", 73, 90, -5);
    EXPECT_EQ(app.CalculateWra(), S_OK);
    EXPECT_NEAR(app.GetPortfTotReqWra(), 3 * 9 + 5 * 9 + 5 * 10, 1e-9);
    EXPECT_NEAR(app.GetPortfShortOptValueWra(), -5 * 10, 1e-9);
    app.DeleteWra();
    EXPECT_EQ(thrownBy([this] { app.DeleteWra(); }).code, HRESULT_FROM_WIN32(ERROR_NOT_FOUND));
}

// ---- Early bound

// The thread's error info, which is taken away by this; empty if it has none.
std::string takenErrorText() {
    IErrorInfo* info = nullptr;
    if (::GetErrorInfo(0, &info) != S_OK) return "";
    const Owned<IErrorInfo> owner(info);
    BSTR text = nullptr;
    info->GetDescription(&text);
    const _bstr_t sentence(text, false);
    return sentence.length() ? static_cast<const char*>(sentence) : "";
}

// With words of their own, not those of the failure before.
TEST(CalculationServers, NullOutputsAreRefused) {
    const auto option = newOptionServer();
    const auto margin = newMarginServer();
    const char* const refused = "An output has no address.";
    const std::pair<const char*, std::function<HRESULT()>> rows[] = {
        {refused, [&] { return option->CalculateImpliedVolatility(5, 42, 40, 0.5, 0.1, 0.1, 0, 0, nullptr); }},
        {refused, [&] { return margin->GetErrorDetails(nullptr); }},
        {"", [&] { return option->GetTypeInfo(0, 0, nullptr); }},
    };
    for (const auto& [text, call] : rows) {
        EXPECT_EQ(margin->Calculate(), HRESULT_FROM_WIN32(ERROR_NOT_FOUND));
        EXPECT_EQ(call(), E_POINTER);
        EXPECT_EQ(takenErrorText(), text);
    }
    margin->Calculate();
    BSTR text = nullptr;
    EXPECT_EQ(margin->GetErrorDetails(&text), S_OK);
    EXPECT_STREQ(static_cast<const char*>(_bstr_t(text, false)), "No portfolio is selected.");
}

// ---- Late bound

// Arguments are given first to last and passed last to first.
HRESULT invoke(IDispatch* server, const wchar_t* name, std::vector<VARIANT> arguments, EXCEPINFO* exception = nullptr) {
    wchar_t* names[] = {const_cast<wchar_t*>(name)};
    DISPID id = 0;
    const HRESULT found = server->GetIDsOfNames(IID_NULL, names, 1, LOCALE_SYSTEM_DEFAULT, &id);
    if (FAILED(found)) return found;
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    return server->Invoke(id, IID_NULL, LOCALE_SYSTEM_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, exception,
                          nullptr);
}

// A number, the place of one, or a text.
template <class Value>
VARIANT variant(Value value, VARTYPE type = VT_R8) {
    VARIANT v = {};
    v.vt = type;
    std::memcpy(&v.llVal, &value, sizeof value);
    return v;
}
VARIANT variant(const _bstr_t& text) { return variant(static_cast<const wchar_t*>(text), VT_BSTR); }

TEST(CalculationServers, ScriptsReachTheMarginServerByName) {
    const auto server = newServer<IDispatch>(kMarginCalculatorClass, IID_IDispatch);
    const _bstr_t name("p"), product("A,100,9,0,0,0,1"), month("2606");
    const std::vector<VARIANT> names(3, variant(name));
    EXPECT_EQ(invoke(server.get(), L"CreatePortfolio", names), S_OK);
    EXPECT_EQ(invoke(server.get(), L"selectportfolio", names), S_OK);
    EXPECT_EQ(invoke(server.get(), L"SetPortfPosition",
                     {variant(name), variant(name), variant(product), variant(0.0), variant(month), variant(month),
                      variant(30.0), variant(0.0), variant(-7.0)}),
              S_OK);
    EXPECT_EQ(invoke(server.get(), L"Calculate", {}), S_OK);
    double requirement = 0;
    EXPECT_EQ(invoke(server.get(), L"GetTotalRequirement",
                     {variant(1.0), variant(1.0), variant(&requirement, VT_R8 | VT_BYREF)}),
              S_OK);
    EXPECT_DOUBLE_EQ(requirement, 63);

    EXCEPINFO exception = {};
    EXPECT_EQ(invoke(server.get(), L"CreatePortfolio", names, &exception), DISP_E_EXCEPTION);
    const _bstr_t sentence(exception.bstrDescription, false), source(exception.bstrSource, false);
    EXPECT_STREQ(static_cast<const char*>(sentence), "A portfolio of this name exists.");
    EXPECT_STREQ(static_cast<const char*>(source), "Quor.MarginCalculator");
    ::SysFreeString(exception.bstrHelpFile);
}

// Entry 7 of the table is position 1.
HRESULT callPosition(IUnknown* object, int position) {
    using Method = HRESULT(STDMETHODCALLTYPE*)(IUnknown*);
    return (*reinterpret_cast<Method**>(object))[6 + position](object);
}

TEST(CalculationServers, UnnamedPositionsAreNotImplemented) {
    const auto option = newOptionServer();
    const auto margin = newMarginServer();
    EXPECT_EQ(callPosition(option.get(), 2), E_NOTIMPL);
    for (const int position : {1, 3, 4, 7, 8, 9, 12, 13, 15, 17})
        EXPECT_EQ(callPosition(margin.get(), position), E_NOTIMPL) << position;
    EXPECT_EQ(callPosition(margin.get(), 5), HRESULT_FROM_WIN32(ERROR_NOT_FOUND));
}

// The type library counts positions as the vtable does.
TEST(CalculationServers, TypeLibraryPositionsAreThoseOfTheTable) {
    const std::pair<CLSID, int> servers[] = {{kOptionCalculatorClass, 4}, {kMarginCalculatorClass, 18}};
    for (const auto& [classId, methods] : servers) {
        const auto server = newServer<IDispatch>(classId, IID_IDispatch);
        ITypeInfo* dispatch = nullptr;
        ASSERT_EQ(server->GetTypeInfo(0, LOCALE_SYSTEM_DEFAULT, &dispatch), S_OK);
        const Owned<ITypeInfo> owner(dispatch);
        int seen = 0;
        FUNCDESC* method = nullptr;
        for (UINT index = 0; SUCCEEDED(dispatch->GetFuncDesc(index, &method)); ++index) {
            if (method->memid > 0 && method->memid < 100) {
                EXPECT_EQ(method->oVft, static_cast<short>((6 + method->memid) * sizeof(void*)));
                ++seen;
            }
            dispatch->ReleaseFuncDesc(method);
        }
        EXPECT_EQ(seen, methods);
    }
}

}  // namespace
