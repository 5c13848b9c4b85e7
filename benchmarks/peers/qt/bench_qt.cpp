// Peer: Qt 6 Widgets. A QTableView on a QAbstractTableModel, alone and with a QSortFilterProxyModel between them; the
// offscreen platform. The proxy is what a skilled user writes: a subclass that reads the typed store directly.
#include "../common/clock.h"
#include "../common/workload.h"

#include <QCollator>
#include <QtWidgets>
#include <functional>
#include <set>

namespace {

using workload::Sample;
constexpr const char* peer = "qt6";

struct Row {
    QString symbol;
    std::uint8_t exchange;
    double d[workload::doubles];
    int n[workload::integers];
    QString date;
};

Row rowOf(const workload::Row& raw) {
    Row row;
    row.symbol = QString::fromLatin1(raw.symbol);
    row.exchange = raw.exchange;
    std::copy(std::begin(raw.d), std::end(raw.d), row.d);
    std::copy(std::begin(raw.n), std::end(raw.n), row.n);
    row.date = QString::fromLatin1(raw.date);
    return row;
}

class Model final : public QAbstractTableModel {
public:
    std::vector<Row> rows;

    void fill(std::uint32_t count) {
        beginResetModel();
        rows.clear();
        rows.reserve(count);
        workload::makeRows(count, [this](std::uint32_t, const workload::Row& raw) { rows.push_back(rowOf(raw)); });
        endResetModel();
    }
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : int(rows.size()); }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : workload::columns; }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole) return {};
        return orientation == Qt::Horizontal ? QVariant(QStringLiteral("c%1").arg(section)) : QVariant(section + 1);
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const int column = index.column();
        if (role == Qt::DisplayRole) return text(rows[std::size_t(index.row())], column);
        if (role == Qt::TextAlignmentRole && column >= 2 && column < 19) return int(Qt::AlignRight | Qt::AlignVCenter);
        return {};
    }
    void notify(int row) { emit dataChanged(index(row, 2), index(row, 16)); }

    // The public protocol: rows removed run by run from the end, and one insert.
    void churnByRuns(const std::vector<std::uint32_t>& leaving, std::vector<Row>&& coming) {
        for (std::size_t end = leaving.size(); end > 0;) {
            std::size_t begin = end - 1;
            while (begin > 0 && leaving[begin - 1] == leaving[begin] - 1) --begin;
            beginRemoveRows({}, int(leaving[begin]), int(leaving[end - 1]));
            rows.erase(rows.begin() + leaving[begin], rows.begin() + leaving[end - 1] + 1);
            endRemoveRows();
            end = begin;
        }
        beginInsertRows({}, int(rows.size()), int(rows.size() + coming.size()) - 1);
        std::move(coming.begin(), coming.end(), std::back_inserter(rows));
        endInsertRows();
    }
    // The quick way: everything anew; whoever keeps a selection must restore it.
    void churnByReset(const std::vector<std::uint32_t>& leaving, std::vector<Row>&& coming) {
        beginResetModel();
        std::vector<Row> kept;
        kept.reserve(rows.size() - leaving.size() + coming.size());
        auto next = leaving.begin();
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (next != leaving.end() && *next == i)
                ++next;
            else
                kept.push_back(std::move(rows[i]));
        }
        std::move(coming.begin(), coming.end(), std::back_inserter(kept));
        rows.swap(kept);
        endResetModel();
    }

private:
    static QVariant text(const Row& row, int column) {
        static const QString exchanges[] = {"NYSE", "NSDQ", "LSE", "XETR", "TSE"};
        if (column == 0) return row.symbol;
        if (column == 1) return exchanges[row.exchange];
        if (column < 16) return QString::number(row.d[column - 2], 'f', 2);
        if (column < 19) return QString::number(row.n[column - 16]);
        return row.date;
    }
};

class Proxy final : public QSortFilterProxyModel {
public:
    enum Filter { none, prefix, contains, greater };
    bool natural = false;

    explicit Proxy(Model& model) {
        m_collator.setNumericMode(true);
        setSourceModel(&model);
    }
    // invalidate() is many times faster than invalidateFilter(), which takes rows out interval by interval.
    void setFilter(Filter filter) {
        m_filter = filter;
        invalidate();
    }
    static bool passes(const Row& row, Filter filter) {
        switch (filter) {
            case prefix:
                return row.symbol.startsWith(QLatin1String("SYM0001"), Qt::CaseInsensitive);
            case contains:
                return row.symbol.contains(QLatin1String("99"), Qt::CaseInsensitive);
            case greater:
                return row.d[0] > 500;
            case none:
                break;
        }
        return true;
    }
    bool filterAcceptsRow(int row, const QModelIndex&) const override {
        return passes(rows()[std::size_t(row)], m_filter);
    }
    bool lessThan(const QModelIndex& a, const QModelIndex& b) const override {
        const Row &x = rows()[std::size_t(a.row())], &y = rows()[std::size_t(b.row())];
        const int column = a.column();
        if (column == 0) return natural ? m_collator.compare(x.symbol, y.symbol) < 0 : x.symbol < y.symbol;
        if (column < 16) return x.d[column - 2] < y.d[column - 2];
        return x.n[column - 16] < y.n[column - 16];
    }

private:
    const std::vector<Row>& rows() const { return static_cast<Model*>(sourceModel())->rows; }
    Filter m_filter = none;
    QCollator m_collator{QLocale(QLocale::English, QLocale::UnitedStates)};
};

class View final : public QTableView {
public:
    explicit View(QAbstractItemModel& model) {
        setModel(&model);
        verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        verticalHeader()->setDefaultSectionSize(20);
        horizontalHeader()->setDefaultSectionSize(76);
        setSelectionBehavior(QAbstractItemView::SelectRows);
        resize(1600, 900);
        show();
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    }
    // After a change: runs the loop until the view has repainted; delayed layouts need a second round.
    void settle(int paintsBefore) {
        for (int i = 0; i < 6 && paints == paintsBefore; ++i) QCoreApplication::processEvents();
        if (paints == paintsBefore) workload::wrong(peer, "a change was not painted");
        QCoreApplication::processEvents();
    }
    int paints = 0;

protected:
    void paintEvent(QPaintEvent* event) override {
        ++paints;
        QTableView::paintEvent(event);
    }
};

struct Settings {
    std::uint32_t rows = 100'000;
    int repeats = 5;
    double mostSeconds = 3;  // a repeat of ticks that takes longer is cut, and scaled to 1,000,000
};
Settings settings;
Model model;

void report(const char* w, const char* variant, double count, const std::vector<Sample>& samples,
            const std::string& note = "") {
    workload::report({peer, w, settings.rows, variant}, count, samples, note);
}

// --- ticks -----------------------------------------------------------------------------------------------------------

enum class Repaint { everyBatch, every200ms, never };

struct TickRun {
    Repaint repaint = Repaint::every200ms;
    bool walk = false;
    Proxy* rebuilt = nullptr;  // rebuilt as a whole before each repaint
};

void repaintNow(Proxy* rebuilt) {
    if (rebuilt) rebuilt->invalidate();
    QCoreApplication::processEvents();
    if (rebuilt) QCoreApplication::processEvents();
}

Sample tickOnce(const TickRun& run) {
    constexpr int total = 1'000'000, batch = 1'000;
    static std::uint32_t repeat = 0;  // new operations each time: a replay would flip nothing
    workload::Random random(workload::operationSeed + repeat++);
    const auto rows = std::uint32_t(model.rows.size());
    const workload::Timer timer;
    double lastPaint = 0;
    int done = 0;
    while (done < total && timer.wall() < settings.mostSeconds) {
        for (int i = 0; i < batch; ++i, ++done) {
            const workload::Tick tick = workload::nextTick(random, rows, run.walk);
            Row& row = model.rows[tick.row];
            row.d[0] = run.walk ? row.d[0] + tick.d0 : tick.d0;
            row.d[5] = tick.d5;
            row.n[0] = tick.n0;
            model.notify(int(tick.row));
        }
        const bool due = run.repaint == Repaint::every200ms && timer.wall() - lastPaint >= 0.2;
        if (run.repaint == Repaint::everyBatch || due) repaintNow(run.rebuilt);
        if (due) lastPaint = timer.wall();
    }
    if (run.repaint == Repaint::every200ms) repaintNow(run.rebuilt);
    const Sample sample = timer.stop();
    return {sample.wall * total / done, sample.cpu * total / done};
}

void ticks(const char* w, const char* variant, const TickRun& run) {
    std::vector<Sample> samples;
    for (int i = 0; i < settings.repeats; ++i) samples.push_back(tickOnce(run));
    report(w, variant, 1e6, samples);
}

void plainTicks() {
    ticks("W1", "model only (signal, no receiver)", {Repaint::never});
    {
        View view(model);
        ticks("W1", "QTableView on model, repaint each frame", {Repaint::everyBatch});
        ticks("W1", "QTableView on model, repaint <=1/200ms", {Repaint::every200ms});
    }
    Proxy proxy(model);
    View view(proxy);
    ticks("W1", "QTableView on proxy, repaint each frame", {Repaint::everyBatch});
    ticks("W1", "QTableView on proxy, repaint <=1/200ms", {Repaint::every200ms});
}

void filteredTicks() {
    model.fill(settings.rows);
    Proxy proxy(model);
    proxy.setFilter(Proxy::greater);
    View view(proxy);
    auto check = [&] {
        int expected = 0;
        for (const Row& row : model.rows) expected += row.d[0] > 500;
        if (expected != proxy.rowCount()) workload::wrong(peer, "W1b: the proxy's count is wrong");
    };
    ticks("W1b", "50% of ticks flip, repaint <=1/200ms", {Repaint::every200ms});
    check();
    model.fill(settings.rows);
    ticks("W1b", "d0 walks +-1, repaint <=1/200ms", {Repaint::every200ms, true});
    check();
    model.fill(settings.rows);
    proxy.setDynamicSortFilter(false);
    ticks("W1b", "50% flip, dynamicSortFilter off, proxy.invalidate() + repaint <=1/200ms",
          {Repaint::every200ms, false, &proxy});
    check();
}

// --- filter and sort -------------------------------------------------------------------------------------------------

struct Action {
    const char* variant;
    std::function<void()> undo, act;
    std::function<bool()> right;
};

// With a view: until it has repainted. Without: until the proxy knows its rows.
void measure(const char* w, const Action& action, Proxy& proxy, View* view) {
    constexpr double budget = 20;
    std::vector<Sample> samples;
    double used = 0;
    for (int i = 0; i < settings.repeats && used < budget; ++i) {
        action.undo();
        for (int k = 0; k < 3; ++k) QCoreApplication::processEvents();
        const int paints = view ? view->paints : 0;
        const workload::Timer timer;
        action.act();
        if (view)
            view->settle(paints);
        else
            proxy.rowCount();
        samples.push_back(timer.stop());
        used += samples.back().wall;
        if (!action.right()) workload::wrong(peer, action.variant);
    }
    report(w, action.variant, 0, samples);
}

void filters(Proxy& proxy, View* view, const char* const (&names)[3]) {
    constexpr Proxy::Filter kinds[] = {Proxy::prefix, Proxy::contains, Proxy::greater};
    for (int i = 0; i < 3; ++i) {
        const Proxy::Filter kind = kinds[i];
        const auto expected = std::count_if(model.rows.begin(), model.rows.end(),
                                            [&](const Row& row) { return Proxy::passes(row, kind); });
        measure("W2",
                {names[i], [&] { proxy.setFilter(Proxy::none); }, [&] { proxy.setFilter(kind); },
                 [&] { return proxy.rowCount() == expected; }},
                proxy, view);
    }
    proxy.setFilter(Proxy::none);
}

void sorts(Proxy& proxy, View* view, const char* const (&names)[4]) {
    struct {
        int column;
        bool natural;
    } const kinds[] = {{3, false}, {16, false}, {0, false}, {0, true}};
    for (int i = 0; i < 4; ++i) {
        const auto& kind = kinds[i];
        auto source = [&](int row) { return proxy.mapToSource(proxy.index(row, kind.column)); };
        auto isSorted = [&] {
            for (int row = 1; row < proxy.rowCount(); ++row) {
                if (proxy.lessThan(source(row), source(row - 1))) return false;
            }
            return true;
        };
        auto undo = [&] {
            proxy.natural = kind.natural;
            proxy.sort(-1);
            proxy.rowCount();
        };
        measure("W3", {names[i], undo, [&] { proxy.sort(kind.column, Qt::AscendingOrder); }, isSorted}, proxy, view);
    }
}

void filtersAndSorts() {
    model.fill(settings.rows);
    {
        Proxy proxy(model);
        View view(proxy);
        filters(proxy, &view, {"prefix SYM0001 (subclass)", "contains 99 (subclass)", "d0 > 500 (subclass)"});
        sorts(proxy, &view,
              {"double (subclass)", "integer (subclass)", "text plain (subclass)", "text natural (QCollator numeric)"});
    }
    Proxy proxy(model);
    filters(proxy, nullptr, {"model only: prefix SYM0001", "model only: contains 99", "model only: d0 > 500"});
    sorts(proxy, nullptr,
          {"model only: double", "model only: integer", "model only: text plain", "model only: text natural"});
}

// --- churn, memory, repaint ------------------------------------------------------------------------------------------

std::set<QString> selectedSymbols(const View& view) {
    std::set<QString> symbols;
    for (const QModelIndex& index : view.selectionModel()->selectedRows(0)) symbols.insert(index.data().toString());
    return symbols;
}

void select(View& view, const Proxy& proxy, const std::function<bool(std::uint32_t)>& wanted) {
    QItemSelection selection;
    for (int row = 0; row < proxy.rowCount(); ++row) {
        if (wanted(std::uint32_t(row))) selection.select(proxy.index(row, 0), proxy.index(row, workload::columns - 1));
    }
    view.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

Sample churnOnce(bool byReset) {
    model.fill(settings.rows);
    Proxy proxy(model);
    View view(proxy);
    const std::vector<std::uint32_t> chosen = workload::selectedRows(settings.rows);
    select(view, proxy, [&](std::uint32_t row) { return std::binary_search(chosen.begin(), chosen.end(), row); });
    QCoreApplication::processEvents();
    workload::Random random(workload::operationSeed);
    const workload::Churn churn = workload::makeChurn(settings.rows, random);
    std::vector<Row> coming;
    for (const workload::Row& raw : churn.coming) coming.push_back(rowOf(raw));
    std::set<QString> expected = selectedSymbols(view);
    for (const std::uint32_t row : churn.leaving) expected.erase(model.rows[row].symbol);

    const int paints = view.paints;
    const workload::Timer timer;
    if (byReset) {
        const std::set<QString> kept = selectedSymbols(view);
        model.churnByReset(churn.leaving, std::move(coming));
        select(view, proxy, [&](std::uint32_t row) { return kept.contains(model.rows[row].symbol); });
    } else {
        model.churnByRuns(churn.leaving, std::move(coming));
    }
    view.settle(paints);
    const Sample sample = timer.stop();
    if (selectedSymbols(view) != expected) workload::wrong(peer, "W4: the selection is wrong");
    return sample;
}

void churns() {
    if (settings.rows != 100'000) return;
    for (const bool byReset : {false, true}) {
        constexpr double budget = 20;
        std::vector<Sample> samples;
        double used = 0;
        for (int i = 0; i < settings.repeats && used < budget; ++i) {
            samples.push_back(churnOnce(byReset));
            used += samples.back().wall;
        }
        report("W4", byReset ? "model reset + reselect by key" : "remove run by run + one insert", 0, samples);
    }
}

void memory() {
    auto value = [](const char* variant, double bytes) {
        workload::reportValue({peer, "W5", settings.rows, variant}, bytes / settings.rows, "B/row");
    };
    const double before = workload::residentBytes();
    model.fill(settings.rows);
    const double filled = workload::residentBytes();
    value("host rows, their strings included", filled - before);
    Proxy proxy(model);
    View view(proxy);
    value("added by proxy + view", workload::residentBytes() - filled);
}

void repaints() {
    View view(model);
    std::vector<Sample> samples;
    for (int i = 0; i < 50; ++i) {
        const workload::Timer timer;
        view.viewport()->repaint();
        samples.push_back(timer.stop());
    }
    report("W0", "one full repaint of the 1600x900 view (about 43 rows x 20 columns)", 0, samples);
}

// --- tabs ------------------------------------------------------------------------------------------------------------

// A bar that shows lays itself out with each tab that it gets. Scrolled by clicks on its own button.
Sample tabsOnce() {
    constexpr int tabs = 500;
    QTabBar bar;
    bar.setUsesScrollButtons(true);
    bar.setExpanding(false);
    bar.resize(900, 24);
    bar.show();
    QCoreApplication::processEvents();
    const workload::Timer timer;
    for (int i = 0; i < tabs; ++i) bar.addTab(QStringLiteral("Workspace %1%2").arg(i).arg(i % 7 ? "" : " of many"));
    auto* const right = bar.findChild<QToolButton*>(QStringLiteral("ScrollRightButton"));
    for (int i = 0; right && i < tabs && right->isEnabled(); ++i) right->click();
    bar.repaint();
    const Sample sample = timer.stop();
    if (!right || bar.tabRect(tabs - 1).right() > bar.width()) workload::wrong(peer, "W7: the last tab is not in view");
    return sample;
}

void tabs() {
    if (settings.rows != 10'000) return;
    std::vector<Sample> samples;
    for (int i = 0; i < settings.repeats; ++i) samples.push_back(tabsOnce());
    workload::report({peer, "W7", 500, "QTabBar"}, 0, samples, "");
}

}  // namespace

// bench_qt [rows [repeats]]
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc > 1) settings.rows = std::uint32_t(std::atol(argv[1]));
    if (argc > 2) settings.repeats = std::atoi(argv[2]);
    workload::reportVersion(peer, qVersion());
    memory();  // first, while the heap is fresh
    repaints();
    plainTicks();
    filteredTicks();
    filtersAndSorts();
    churns();
    tabs();
}
