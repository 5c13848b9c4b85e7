// A call that the calculation servers refuse: the reason, and a sentence for the caller. Thrown before anything is
// changed or written; the COM layer makes an HRESULT with error info of it.
#pragma once

#include <stdexcept>
#include <string>

namespace servers {

enum class Reason {
    BadArgument,    // a number or a text that means nothing here
    NoOutput,       // an output without an address
    OutsideBounds,  // a price that no volatility gives
    NotFound,       // no such portfolio, or none selected
    AlreadyThere,   // a portfolio of that name exists
    NotCalculated,  // results were asked for before Calculate, or after a change
};

class Refusal : public std::runtime_error {
public:
    Refusal(Reason reason, const std::string& sentence) : std::runtime_error(sentence), m_reason(reason) {}
    Reason reason() const { return m_reason; }

private:
    Reason m_reason;
};

}  // namespace servers
