#include "quor/calculators/QuorCOMWrapApp.h"

#include "quor/calculators/core/Black76.h"
#include "servers/interfaces/CalculationServers.h"

namespace {

// A server of the process, created once by the host. The pointer outlives everything that could release it safely, so
// it is not released; the end of COM on this thread is paired with the start in create().
template <class Interface>
class Server {
public:
    constexpr explicit Server(const IID& iid) : m_iid(iid) {}
    ~Server() { ::CoUninitialize(); }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    bool create(const CLSID& classId) {
        ::CoInitialize(nullptr);
        void* created = nullptr;
        const HRESULT result = ::CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, m_iid, &created);
        if (FAILED(result)) return false;
        m_server = static_cast<Interface*>(created);
        return true;
    }

    // Calls a method; what fails is thrown. Returns the success code.
    template <class... Parameters, class... Arguments>
    HRESULT call(HRESULT (STDMETHODCALLTYPE Interface::*method)(Parameters...), Arguments... arguments) {
        const HRESULT result = (m_server->*method)(arguments...);
        if (FAILED(result)) _com_issue_errorex(result, m_server, m_iid);
        return result;
    }

private:
    Interface* m_server = nullptr;
    const IID& m_iid;
};

Server<IOptionCalculator> optionServer(kOptionCalculatorInterface);
Server<IMarginCalculator> marginServer(kMarginCalculatorInterface);

CQuorCOMWrapApp theApp;

// A text for the length of one call.
BSTR bstr(const _bstr_t& text) { return const_cast<BSTR>(static_cast<const wchar_t*>(text)); }

// What every portfolio call names.
struct PortfolioName {
    _bstr_t portfolio{"otn"}, account{"101"}, segment{"N/A"};
};

void giveOut(const quor::black76::Outputs& out, double& price, double& delta, double& gamma, double& theta,
             double& vega, double& rho) {
    price = out.price;
    delta = out.delta;
    gamma = out.gamma;
    theta = out.theta;
    vega = out.vega;
    rho = out.rho;
}

}  // namespace

CQuorCOMWrapApp& quorCalculators() { return theApp; }

BOOL CQuorCOMWrapApp::InitInstance() {
    CWinApp::InitInstance();
    return TRUE;
}

void CQuorCOMWrapApp::GetSpan(bool* pbOk) { *pbOk = optionServer.create(kOptionCalculatorClass); }
void CQuorCOMWrapApp::GetSpanCom(bool* pbOk) { *pbOk = marginServer.create(kMarginCalculatorClass); }

// --- Black-76 ------------------------------------------------------------------------------------------------------

void CQuorCOMWrapApp::CalcBlack76ModelCallData(double F, double r, double T, double sigma, double K, double& price,
                                               double& delta, double& gamma, double& theta, double& vega, double& rho) {
    giveOut(quor::black76::call({F, r, T, sigma, K}), price, delta, gamma, theta, vega, rho);
}

void CQuorCOMWrapApp::CalcBlack76ModelPutData(double F, double r, double T, double sigma, double K, double& price,
                                              double& delta, double& gamma, double& theta, double& vega, double& rho) {
    giveOut(quor::black76::put({F, r, T, sigma, K}), price, delta, gamma, theta, vega, rho);
}

double CQuorCOMWrapApp::NormalDistribution(double x) { return quor::black76::normalDistribution(x); }

// --- The option server ---------------------------------------------------------------------------------------------

void CQuorCOMWrapApp::CalcPriceWra(double spot, float strike, double years, double rate, double carry,
                                   double volatility, double dividends, short right, short exercise, short steps,
                                   double* price, double* delta, double* gamma, double* theta, double* vega,
                                   double* rho) {
    optionServer.call(&IOptionCalculator::CalculatePrice, spot, static_cast<double>(strike), years, rate, carry,
                      volatility, dividends, right, exercise, steps, price, delta, gamma, theta, vega, rho);
}

void CQuorCOMWrapApp::CalculateImpVolatilityWra(double price, double spot, double strike, double years, double rate,
                                                double carry, double dividends, short kind, double* volatility) {
    optionServer.call(&IOptionCalculator::CalculateImpliedVolatility, price, spot, strike, years, rate, carry,
                      dividends, kind, volatility);
}

void CQuorCOMWrapApp::CalculateBSPriceWra(double spot, float strike, double years, double rate, double volatility,
                                          short right, double carry, double dividends, double* price, double* delta,
                                          double* gamma, double* theta, double* vega, double* rho) {
    optionServer.call(&IOptionCalculator::CalculateBlackScholes, spot, static_cast<double>(strike), years, rate,
                      volatility, right, carry, dividends, price, delta, gamma, theta, vega, rho);
}

// --- The margin server ---------------------------------------------------------------------------------------------

void CQuorCOMWrapApp::CreatePortfolioWra() {
    const PortfolioName name;
    marginServer.call(&IMarginCalculator::CreatePortfolio, bstr(name.portfolio), bstr(name.account),
                      bstr(name.segment));
}

void CQuorCOMWrapApp::SelectPortfolioWra() {
    const PortfolioName name;
    marginServer.call(&IMarginCalculator::SelectPortfolio, bstr(name.portfolio), bstr(name.account),
                      bstr(name.segment));
}

void CQuorCOMWrapApp::DeleteWra() { marginServer.call(&IMarginCalculator::DeletePortfolio); }

void CQuorCOMWrapApp::SetPortfPositionWra(CString, CString, CString c, int d, CString e, CString, int g, float h,
                                          long i) {
    const _bstr_t house("NSCCL"), exchange("NSE"), product(c.GetString()), month(e.GetString()),
        underlyingMonth(e.GetString());
    marginServer.call(&IMarginCalculator::SetPortfPosition, bstr(house), bstr(exchange), bstr(product),
                      static_cast<short>(d), bstr(month), bstr(underlyingMonth), static_cast<short>(g), h, i);
}

int CQuorCOMWrapApp::CalculateWra() { return marginServer.call(&IMarginCalculator::Calculate); }

double CQuorCOMWrapApp::portfolioValue() {
    marginServer.call(&IMarginCalculator::GetNetOptionValue, &m_dPortfolioValue);
    return m_dPortfolioValue;
}

double CQuorCOMWrapApp::GetPortfLongFutValueWra() { return portfolioValue(); }
double CQuorCOMWrapApp::GetPortfShortFutValueWra() { return portfolioValue(); }
double CQuorCOMWrapApp::GetPortfLongOptValueWra() { return portfolioValue(); }
double CQuorCOMWrapApp::GetPortfShortOptValueWra() { return portfolioValue(); }

double CQuorCOMWrapApp::GetPortfTotReqWra() {
    constexpr short kWhole = 1, kLessOptionValue = 1;
    marginServer.call(&IMarginCalculator::GetTotalRequirement, kWhole, kLessOptionValue, &m_dPortfolioValue);
    return m_dPortfolioValue;
}

// The text never reaches the box: the buffer that is shown stays zeroed. Hosts were written against that.
void CQuorCOMWrapApp::GetErrorDetailsWra() {
    char shown[256] = "";
    BSTR details = nullptr;
    marginServer.call(&IMarginCalculator::GetErrorDetails, &details);
    const _bstr_t owner(details, false);
    AfxMessageBox(shown);
}
