// The COM interfaces of the two calculation servers, as their callers and the servers themselves see them. Methods are
// counted from 1 behind the seven entries of IDispatch; what is called Unnamed... is a place that nobody calls and that
// answers E_NOTIMPL. The .idl files of the servers describe the same to late-bound callers.
//
// The meaning of every argument stands in docs/calculators.md.
#pragma once

#include "quor/platform/Base.h"

#include <ole2.h>

constexpr CLSID kOptionCalculatorClass = {0x0C332960, 0xAC64, 0x11D7, {0xB4, 0x57, 0x00, 0xD0, 0xB7, 0xBD, 0x01, 0x2C}};
constexpr IID kOptionCalculatorInterface = {
    0x0C33295F, 0xAC64, 0x11D7, {0xB4, 0x57, 0x00, 0xD0, 0xB7, 0xBD, 0x01, 0x2C}};
constexpr CLSID kMarginCalculatorClass = {0x5B17F3FC, 0xFBCD, 0x4208, {0xAF, 0x23, 0xAA, 0x13, 0xB4, 0x71, 0x72, 0x57}};
constexpr IID kMarginCalculatorInterface = {
    0x40A9F92B, 0x445D, 0x4154, {0x8A, 0x74, 0x5D, 0xF0, 0x19, 0xFA, 0x5E, 0xE5}};

// Failures of the servers' own, besides those of COM (E_INVALIDARG, E_POINTER, ...).
constexpr HRESULT kOutsideBounds = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, 0x201);
constexpr HRESULT kNotCalculated = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, 0x202);

// Interfaces are ended by Release, never by delete: the warning does not see that.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

// Outputs are written on success only, all of them.
struct IOptionCalculator : IDispatch {
    // 1. American or European exercise, cash dividends.
    virtual HRESULT STDMETHODCALLTYPE CalculatePrice(double spot, double strike, double years, double rate,
                                                     double carry, double volatility, double dividends, short right,
                                                     short exercise, short steps, double* price, double* delta,
                                                     double* gamma, double* theta, double* vega, double* rho) = 0;
    virtual HRESULT STDMETHODCALLTYPE Unnamed2() = 0;
    // 3
    virtual HRESULT STDMETHODCALLTYPE CalculateImpliedVolatility(double price, double spot, double strike, double years,
                                                                 double rate, double carry, double dividends,
                                                                 short kind, double* volatility) = 0;
    // 4. European, by formula.
    virtual HRESULT STDMETHODCALLTYPE CalculateBlackScholes(double spot, double strike, double years, double rate,
                                                            double volatility, short right, double carry,
                                                            double dividends, double* price, double* delta,
                                                            double* gamma, double* theta, double* vega,
                                                            double* rho) = 0;

protected:
    ~IOptionCalculator() = default;
};

struct IMarginCalculator : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Unnamed1() = 0;
    virtual HRESULT STDMETHODCALLTYPE Calculate() = 0;  // 2. S_FALSE: there is no position
    virtual HRESULT STDMETHODCALLTYPE Unnamed3() = 0;
    virtual HRESULT STDMETHODCALLTYPE Unnamed4() = 0;
    virtual HRESULT STDMETHODCALLTYPE DeletePortfolio() = 0;                 // 5
    virtual HRESULT STDMETHODCALLTYPE GetNetOptionValue(double* value) = 0;  // 6
    virtual HRESULT STDMETHODCALLTYPE Unnamed7() = 0;
    virtual HRESULT STDMETHODCALLTYPE Unnamed8() = 0;
    virtual HRESULT STDMETHODCALLTYPE Unnamed9() = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePortfolio(BSTR portfolio, BSTR account, BSTR segment) = 0;  // 10
    virtual HRESULT STDMETHODCALLTYPE SelectPortfolio(BSTR portfolio, BSTR account, BSTR segment) = 0;  // 11
    virtual HRESULT STDMETHODCALLTYPE Unnamed12() = 0;
    virtual HRESULT STDMETHODCALLTYPE Unnamed13() = 0;
    // 14
    virtual HRESULT STDMETHODCALLTYPE SetPortfPosition(BSTR clearing, BSTR exchange, BSTR product, short kind,
                                                       BSTR month, BSTR underlyingMonth, short days, float strike,
                                                       LONG quantity) = 0;
    virtual HRESULT STDMETHODCALLTYPE Unnamed15() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTotalRequirement(short whole, short credit, double* requirement) = 0;  // 16
    virtual HRESULT STDMETHODCALLTYPE Unnamed17() = 0;
    // 18. The caller frees the text.
    virtual HRESULT STDMETHODCALLTYPE GetErrorDetails(BSTR* details) = 0;

protected:
    ~IMarginCalculator() = default;
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
