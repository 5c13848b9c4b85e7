// The option calculator: arguments in, the option model, results out.
#include "servers/com/ServerObject.h"
#include "servers/core/OptionModel.h"
#include "servers/core/Refusal.h"
#include "servers/interfaces/CalculationServers.h"

#include <array>

namespace servers {

namespace {

// Where the results of a valuation go.
struct Outputs {
    double *price, *delta, *gamma, *theta, *vega, *rho;
    std::array<const double*, 6> all() const { return {price, delta, gamma, theta, vega, rho}; }
};

void write(const Valuation& v, const Outputs& out) {
    *out.price = v.price;
    *out.delta = v.delta;
    *out.gamma = v.gamma;
    *out.theta = v.theta;
    *out.vega = v.vega;
    *out.rho = v.rho;
}

Right rightOf(int code) {
    if (code != 0 && code != 1) throw Refusal(Reason::BadArgument, "The right must be 0 (call) or 1 (put).");
    return code == 0 ? Right::Call : Right::Put;
}

Exercise exerciseOf(int code) {
    if (code != 0 && code != 1) throw Refusal(Reason::BadArgument, "Exercise must be 0 (European) or 1 (American).");
    return code == 0 ? Exercise::European : Exercise::American;
}

class OptionServer final : public ServerObject<OptionServer, IOptionCalculator> {
public:
    HRESULT STDMETHODCALLTYPE CalculatePrice(double spot, double strike, double years, double rate, double carry,
                                             double volatility, double dividends, short right, short exercise,
                                             short steps, double* price, double* delta, double* gamma, double* theta,
                                             double* vega, double* rho) override {
        return valued({price, delta, gamma, theta, vega, rho}, [&] {
            return Option{spot, strike, years, rate, carry, volatility, dividends, rightOf(right), exerciseOf(exercise),
                          steps};
        });
    }

    HRESULT STDMETHODCALLTYPE Unnamed2() override { return unnamed(); }

    HRESULT STDMETHODCALLTYPE CalculateImpliedVolatility(double price, double spot, double strike, double years,
                                                         double rate, double carry, double dividends, short kind,
                                                         double* volatility) override {
        return guarded([&] {
            requireOutput(volatility);
            if (kind < 0 || kind > 3) throw Refusal(Reason::BadArgument, "The kind must be from 0 to 3.");
            const Option option = {
                spot, strike, years, rate, carry, 0, dividends, rightOf(kind & 1), exerciseOf(kind >> 1), 0};
            *volatility = impliedVolatility(option, price);
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE CalculateBlackScholes(double spot, double strike, double years, double rate,
                                                    double volatility, short right, double carry, double dividends,
                                                    double* price, double* delta, double* gamma, double* theta,
                                                    double* vega, double* rho) override {
        return valued({price, delta, gamma, theta, vega, rho}, [&] {
            return Option{spot, strike, years, rate, carry, volatility, dividends, rightOf(right), Exercise::European,
                          0};
        });
    }

private:
    template <class Describe>
    HRESULT valued(const Outputs& out, Describe&& describe) {
        return guarded([&] {
            for (const double* output : out.all()) requireOutput(output);
            write(value(describe()), out);
            return S_OK;
        });
    }
};

IDispatch* newOptionServer() { return new OptionServer; }

}  // namespace

const ServerDescription& serverDescription() {
    static const ServerDescription description = {
        kOptionCalculatorClass,
        kOptionCalculatorInterface,
        {0x3E5B1B0A, 0x52C4, 0x4E7B, {0x8E, 0x0B, 0x6F, 0x3C, 0x2D, 0x9A, 0x7E, 0x10}},
        L"Quor.OptionCalculator",
        L"Quor option calculator",
        newOptionServer,
    };
    return description;
}

}  // namespace servers
