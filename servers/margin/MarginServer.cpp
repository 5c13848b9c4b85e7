// The margin calculator: a book of portfolios behind its interface.
#include "servers/com/ServerObject.h"
#include "servers/core/MarginBook.h"
#include "servers/interfaces/CalculationServers.h"

#include <new>

namespace servers {

namespace {

class MarginServer final : public ServerObject<MarginServer, IMarginCalculator> {
public:
    HRESULT STDMETHODCALLTYPE Calculate() override {
        return guarded([&] { return m_book.selected().calculate() ? S_OK : S_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE DeletePortfolio() override {
        return done([&] { m_book.eraseSelected(); });
    }
    HRESULT STDMETHODCALLTYPE GetNetOptionValue(double* value) override {
        return written(value, [&] { return m_book.result().netOptionValue(); });
    }
    HRESULT STDMETHODCALLTYPE CreatePortfolio(BSTR portfolio, BSTR account, BSTR segment) override {
        return done([&] { m_book.create({textOf(portfolio), textOf(account), textOf(segment)}); });
    }
    HRESULT STDMETHODCALLTYPE SelectPortfolio(BSTR portfolio, BSTR account, BSTR segment) override {
        return done([&] { m_book.select({textOf(portfolio), textOf(account), textOf(segment)}); });
    }
    HRESULT STDMETHODCALLTYPE SetPortfPosition(BSTR clearing, BSTR exchange, BSTR product, short kind, BSTR month,
                                               BSTR underlyingMonth, short days, float strike, LONG quantity) override {
        return done([&] {
            m_book.selected().setPosition({textOf(clearing), textOf(exchange), textOf(product), kind, textOf(month),
                                           textOf(underlyingMonth), days, strike, quantity});
        });
    }
    HRESULT STDMETHODCALLTYPE GetTotalRequirement(short whole, short credit, double* requirement) override {
        return written(requirement, [&] { return m_book.requirement(whole, credit); });
    }
    HRESULT STDMETHODCALLTYPE GetErrorDetails(BSTR* details) override {
        return guarded([&] {
            requireOutput(details);
            const BSTR text = newBstr(lastFailure().sentence);
            if (!text) throw std::bad_alloc();
            *details = text;
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE Unnamed1() override { return unnamed(); }
    HRESULT STDMETHODCALLTYPE Unnamed3() override { return unnamed(); }
    HRESULT STDMETHODCALLTYPE Unnamed4() override { return unnamed(); }
    HRESULT STDMETHODCALLTYPE Unnamed7() override { return unnamed(); }
    HRESULT STDMETHODCALLTYPE Unnamed8() override { return unnamed(); }
    HRESULT STDMETHODCALLTYPE Unnamed9() override { return unnamed(); }
    HRESULT STDMETHODCALLTYPE Unnamed12() override { return unnamed(); }
    HRESULT STDMETHODCALLTYPE Unnamed13() override { return unnamed(); }
    HRESULT STDMETHODCALLTYPE Unnamed15() override { return unnamed(); }
    HRESULT STDMETHODCALLTYPE Unnamed17() override { return unnamed(); }

private:
    template <class Action>
    HRESULT done(Action&& action) {
        return guarded([&] {
            action();
            return S_OK;
        });
    }
    template <class Number>
    HRESULT written(double* output, Number&& number) {
        return guarded([&] {
            requireOutput(output);
            *output = number();
            return S_OK;
        });
    }

    MarginBook m_book;
};

IDispatch* newMarginServer() { return new MarginServer; }

}  // namespace

const ServerDescription& serverDescription() {
    static const ServerDescription description = {
        kMarginCalculatorClass,
        kMarginCalculatorInterface,
        {0x8D0F6A34, 0x9C1E, 0x4B57, {0xA2, 0xD3, 0x1B, 0x7E, 0x5C, 0x4F, 0x60, 0x11}},
        L"Quor.MarginCalculator",
        L"Quor portfolio margin calculator",
        newMarginServer,
    };
    return description;
}

}  // namespace servers
