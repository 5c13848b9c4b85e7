// The option chain pane: calls on the left, the strike in the middle, puts on the right; a row for each strike.
//
// The rows stay the same objects for the whole run, in the order of their strikes; what they show changes at most twice
// a second. The sides in the money are tinted and the row at the money stands out.
#pragma once

#include "host/core/OptionChain.h"
#include "host/core/Statistics.h"
#include "host/panes/ChainPricer.h"
#include "host/panes/ListPane.h"
#include "host/panes/LiveGrid.h"
#include "host/panes/WatchPane.h"

#include <array>

namespace terminal {

// The columns, by columnIndex: the calls' mirror the puts'.
enum class ChainColumn {
    callVega,
    callTheta,
    callGamma,
    callDelta,
    callVolatility,
    callPrice,
    strike,
    putPrice,
    putVolatility,
    putDelta,
    putGamma,
    putTheta,
    putVega,
    count
};

class CChainPane : public CListPane {
public:
    // The watch names the underlying and its price; it is borrowed and outlives the pane's last update.
    CChainPane(PaintFigures& figures, const CWatchPane& watch);

    CCommonListCtrl& list() override { return m_grid; }
    const OptionChain& chain() const { return m_chain; }

    // Asks for the option server; before the first update.
    void connect() { m_pricer.connect(); }
    // Recomputes the chain if that is due and something changed. Only between batches, which it closes.
    void update(std::int64_t now);
    // Microseconds that the recomputes took.
    const Percentiles& costs() const { return m_costs; }

private:
    struct Row : CFilterListBaseData {
        int index = 0;  // in the chain
    };

    BOOL createList() override;
    int cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& color, COLORREF& back, int& icon);
    std::optional<ChainBasis> basisNow();
    void show();

    PaintFigures& m_figures;
    const CWatchPane& m_watch;
    ChainPricer m_pricer;
    OptionChain m_chain;
    Percentiles m_costs;
    std::array<Row, OptionChain::kStrikes> m_rows;
    CLiveGrid m_grid;  // the last member: it dies before the rows
};

}  // namespace terminal
