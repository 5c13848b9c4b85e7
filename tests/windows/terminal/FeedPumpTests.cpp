// The pump between a scripted feed and the three panes that it fills.
#include "host/FeedPump.h"
#include "host/HostEntries.h"
#include "host/resource.h"
#include "support/WindowFixture.h"
#include "tests/core/host/HostTestTools.h"
#include "tests/windows/terminal/NoDisk.h"

namespace terminal {
namespace {

// A tick a millisecond, each one a new order at a higher price than all before it.
class RisingOrders final : public TickSource {
public:
    Next next(Tick& tick) override {
        const OrderId id = ++m_last;
        tick.time = static_cast<MarketTime>(id) * 1'000'000;
        tick.events.clear();
        if (id == 1) tick.events.push_back(Instrument{.id = 0, .symbol = "A", .series = "EQ"});
        const Price price = static_cast<Price>(id) * priceOne;
        tick.events.push_back(OrderEvent{OrderAction::add, {.id = id, .price = price, .quantity = 1}});
        return Next::tick;
    }
    const std::string& error() const override { return m_error; }

private:
    OrderId m_last = 0;
    std::string m_error;
};

struct FeedPumpTest : ::test::WindowFixture {
    FeedPumpTest() {
        useSettings(&settings);
        panes.watch = new CWatchPane(figures);  // views: they go with their windows
        panes.orders = new COrdersPane(figures);
        panes.trades = new CTradesPane(figures, 100);
        panes.watch->CreatePane(&frame(), IDC_PANE_WATCH);
        panes.orders->CreatePane(&frame(), IDC_PANE_ORDERS);
        panes.trades->CreatePane(&frame(), IDC_PANE_TRADES);
    }
    void TearDown() override {
        WindowFixture::TearDown();
        useSettings(nullptr);
    }
    std::vector<OrderId> shownOrders() {
        std::vector<OrderId> ids;
        CLiveGrid& grid = panes.orders->grid();
        for (int visual = 0; visual < grid.GetDisplayCount(); ++visual) {
            auto* const row = reinterpret_cast<CFilterListBaseData*>(grid.GetItemData(visual));
            ids.push_back(static_cast<const OrderRow*>(row)->order.id);
        }
        return ids;
    }

    NoDisk device;
    SettingsFile settings{device, ""};
    test::SetClock clock;
    PaintFigures figures{clock};
    Panes panes;
};

TEST_F(FeedPumpTest, APauseLeavesTheOrdersInTheirLockedOrder) {
    constexpr std::int64_t millisecond = 1'000;
    Feed feed(std::make_unique<RisingOrders>(), {});
    FeedPump pump(feed, {}, clock, panes);
    clock.now = 1'000 * millisecond;
    pump.slice();
    clock.now += 2 * millisecond;  // too soon for a sort of its own
    pump.slice();
    ASSERT_EQ(shownOrders(), (std::vector<OrderId>{1, 2, 3}));
    pump.pause(true);
    EXPECT_EQ(shownOrders(), (std::vector<OrderId>{3, 2, 1}));
}

}  // namespace
}  // namespace terminal
