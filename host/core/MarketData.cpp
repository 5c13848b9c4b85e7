#include "host/core/MarketData.h"

namespace terminal {

void mergeQuote(Quote& state, const Quote& news) {
    auto take = [&](QuoteField field, auto Quote::*member) {
        if (news.has(field)) state.*member = news.*member;
    };
    take(quoteLast, &Quote::last);
    take(quoteLastSize, &Quote::lastSize);
    take(quoteBid, &Quote::bid);
    take(quoteAsk, &Quote::ask);
    take(quoteBidSize, &Quote::bidSize);
    take(quoteAskSize, &Quote::askSize);
    take(quoteOpen, &Quote::open);
    take(quoteHigh, &Quote::high);
    take(quoteLow, &Quote::low);
    take(quoteClose, &Quote::close);
    take(quoteVolume, &Quote::volume);
    take(quoteValue, &Quote::value);
    take(quoteOpenInterest, &Quote::openInterest);
    state.instrument = news.instrument;
    state.fields |= news.fields;
    state.time = news.time;
}

}  // namespace terminal
