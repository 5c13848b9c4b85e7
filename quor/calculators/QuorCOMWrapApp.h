// CQuorCOMWrapApp: the library's application object, and the home of its option pricing and margin functions.
//
// Black-76 is computed here. The rest is handed to two in-process COM servers, whose interfaces stand in
// servers/interfaces/CalculationServers.h and whose arguments are explained in docs/calculators.md. The wrappers add no
// logic: a team without these servers can put a class of its own behind the same operations.
//
// The host calls GetSpan and GetSpanCom first, each once, on the thread that will call the wrappers: each sets a
// pointer of the process, which all objects of this class use. A wrapper whose server was not created faults. Nothing
// is locked, and the portfolio values pass through a field of the object: one call at a time.
//
// Failures: a failing HRESULT of a server reaches the caller as a _com_error (quor/platform/win/ComError.h) with the
// error info of that server's interface; so does a text for which there is no memory (E_OUTOFMEMORY). Nothing is caught
// here.
#pragma once

#include "quor/platform/Framework.h"

class QUOR_CONTROLS_API CQuorCOMWrapApp : public CWinApp {
public:
    CQuorCOMWrapApp() = default;
    // Creates no server. TRUE.
    BOOL InitInstance() override;

    // CoInitialize, then the option server (GetSpan) or the margin server (GetSpanCom). *pbOk: whether the server could
    // be created. At the end of the process each of the two server pointers calls CoUninitialize, created or not; the
    // servers are not released.
    void GetSpan(bool* pbOk);
    void GetSpanCom(bool* pbOk);

    // Options on futures: price F of the future, rate r, years T, volatility sigma, strike K. Theta is per day, vega
    // and rho per point. Nothing is checked; see quor/calculators/core/Black76.h.
    void CalcBlack76ModelCallData(double F, double r, double T, double sigma, double K, double& price, double& delta,
                                  double& gamma, double& theta, double& vega, double& rho);
    void CalcBlack76ModelPutData(double F, double r, double T, double sigma, double K, double& price, double& delta,
                                 double& gamma, double& theta, double& vega, double& rho);
    double NormalDistribution(double x);

    // The option server. Arguments go on in this order, the strike widened to double; outputs are untouched on failure.
    void CalcPriceWra(double spot, float strike, double years, double rate, double carry, double volatility,
                      double dividends, short right, short exercise, short steps, double* price, double* delta,
                      double* gamma, double* theta, double* vega, double* rho);
    void CalculateImpVolatilityWra(double price, double spot, double strike, double years, double rate, double carry,
                                   double dividends, short kind, double* volatility);
    void CalculateBSPriceWra(double spot, float strike, double years, double rate, double volatility, short right,
                             double carry, double dividends, double* price, double* delta, double* gamma, double* theta,
                             double* vega, double* rho);

    // The margin server. The portfolio is always the one named "otn", "101", "N/A".
    void CreatePortfolioWra();
    void SelectPortfolioWra();
    void DeleteWra();
    // The contract's product goes on as `c`, its kind `d` and the days `g` cut to 16 bits, the month `e` twice, the
    // strike `h` and the quantity `i`. The house and the exchange are fixed ("NSCCL", "NSE"): `a`, `b` and `f` are
    // unread.
    void SetPortfPositionWra(CString a, CString b, CString c, int d, CString e, CString f, int g, float h, long i);
    // The server's success code: 1 (S_FALSE) when the portfolio is empty.
    int CalculateWra();
    // Four names for one reading of the server: the net value of the options.
    double GetPortfLongFutValueWra();
    double GetPortfShortFutValueWra();
    double GetPortfLongOptValueWra();
    double GetPortfShortOptValueWra();
    // The whole requirement, less the net option value.
    double GetPortfTotReqWra();
    // Fetches the server's last error text and shows an empty message box: hosts rely on the box, none reads the text.
    void GetErrorDetailsWra();

private:
    double portfolioValue();

    double m_dPortfolioValue = 0;  // receives each portfolio value before it is returned
};

// The object of QuorControls.dll.
QUOR_CONTROLS_API CQuorCOMWrapApp& quorCalculators();
