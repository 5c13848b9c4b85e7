// Peer: GTK 4. A GtkColumnView over GListStore, GtkFilterListModel, GtkSortListModel and GtkMultiSelection; needs a
// display. GTK paints on its own clock of 60 frames a second, so an action's time ends with the frame that shows it;
// the note gives the part before that.
#include "../common/clock.h"
#include "../common/workload.h"

#include <cstring>
#include <functional>
#include <gtk/gtk.h>
#include <set>

namespace {

constexpr const char* peer = "gtk4";

struct PeerRow {
    GObject parent;
    workload::Row data;
};
struct PeerRowClass {
    GObjectClass parent;
};
guint changedSignal;
G_DEFINE_TYPE(PeerRow, peer_row, G_TYPE_OBJECT)
void peer_row_class_init(PeerRowClass* type) {
    changedSignal = g_signal_new("changed", G_TYPE_FROM_CLASS(type), G_SIGNAL_RUN_LAST, 0, nullptr, nullptr, nullptr,
                                 G_TYPE_NONE, 0);
}
void peer_row_init(PeerRow*) {}

PeerRow* rowOf(const workload::Row& data) {
    auto* const row = static_cast<PeerRow*>(g_object_new(peer_row_get_type(), nullptr));
    row->data = data;
    return row;
}

// --- cells -----------------------------------------------------------------------------------------------------------

void showCell(GtkListItem* item, int column) {
    const workload::Row& row = static_cast<PeerRow*>(gtk_list_item_get_item(item))->data;
    char text[40];
    if (column == 0)
        std::strcpy(text, row.symbol);
    else if (column == 1)
        std::strcpy(text, workload::exchanges[row.exchange]);
    else if (column < 16)
        std::snprintf(text, sizeof text, "%.2f", row.d[column - 2]);
    else if (column < 19)
        std::snprintf(text, sizeof text, "%d", row.n[column - 16]);
    else
        std::strcpy(text, row.date);
    gtk_label_set_text(GTK_LABEL(gtk_list_item_get_child(item)), text);
}

void onChanged(PeerRow*, gpointer item) {
    showCell(GTK_LIST_ITEM(item), GPOINTER_TO_INT(g_object_get_data(G_OBJECT(item), "column")));
}

void onSetup(GtkSignalListItemFactory*, GtkListItem* item, gpointer) {
    gtk_list_item_set_child(item, gtk_label_new(""));
}

void onBind(GtkSignalListItemFactory*, GtkListItem* item, gpointer column) {
    g_object_set_data(G_OBJECT(item), "column", column);
    showCell(item, GPOINTER_TO_INT(column));
    const gulong handler = g_signal_connect(gtk_list_item_get_item(item), "changed", G_CALLBACK(onChanged), item);
    g_object_set_data(G_OBJECT(item), "handler", GSIZE_TO_POINTER(handler));
}

void onUnbind(GtkSignalListItemFactory*, GtkListItem* item, gpointer) {
    const auto handler = GPOINTER_TO_SIZE(g_object_get_data(G_OBJECT(item), "handler"));
    g_signal_handler_disconnect(gtk_list_item_get_item(item), handler);
}

// --- filter and sort keys --------------------------------------------------------------------------------------------

enum Filter { none, prefix, contains, greater };
Filter activeFilter = none;

bool passes(const workload::Row& row, Filter filter) {
    switch (filter) {
        case prefix:
            return g_ascii_strncasecmp(row.symbol, "SYM0001", 7) == 0;
        case contains:
            return std::strstr(row.symbol, "99") != nullptr;
        case greater:
            return row.d[0] > 500;
        case none:
            break;
    }
    return true;
}

gboolean filterRow(gpointer row, gpointer) { return passes(static_cast<PeerRow*>(row)->data, activeFilter); }
double doubleKey(PeerRow* row, gpointer) { return row->data.d[1]; }
double integerKey(PeerRow* row, gpointer) { return row->data.n[0]; }
int compareText(gconstpointer a, gconstpointer b, gpointer) {
    return std::strcmp(static_cast<const PeerRow*>(a)->data.symbol, static_cast<const PeerRow*>(b)->data.symbol);
}

GtkSorter* numericSorter(GCallback key) {
    GtkExpression* const expression =
        gtk_cclosure_expression_new(G_TYPE_DOUBLE, nullptr, 0, nullptr, key, nullptr, nullptr);
    return GTK_SORTER(gtk_numeric_sorter_new(expression));
}

// --- the bench -------------------------------------------------------------------------------------------------------

int frames = 0;
void onFrame(GdkFrameClock*, gpointer) { ++frames; }
void pump() {
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
}

class Bench {
public:
    Bench(std::uint32_t rows, int repeats) : m_count(rows), m_repeats(repeats) {}

    void run() {
        memory();
        ticks("W1", "signal per update, main loop <=1/200ms", false);
        setFilter(greater);
        untilPainted();
        ticks("W1b", "50% flip, refilter all <=1/200ms", true);
        setFilter(none);
        filters();
        sorts();
        if (m_count == 100'000) churn();
    }

private:
    void memory() {
        auto value = [&](const char* variant, double bytes) {
            workload::reportValue({peer, "W5", m_count, variant}, bytes / m_count, "B/row");
        };
        const double before = workload::residentBytes();
        m_store = g_list_store_new(peer_row_get_type());
        workload::makeRows(m_count, [&](std::uint32_t, const workload::Row& row) { m_rows.push_back(rowOf(row)); });
        g_list_store_splice(m_store, 0, 0, reinterpret_cast<gpointer*>(m_rows.data()), m_count);
        const double filled = workload::residentBytes();
        value("host rows (GObject) + GListStore", filled - before);
        makeView();
        value("added by models + view", workload::residentBytes() - filled);
    }

    void makeView() {
        m_filter = GTK_FILTER(gtk_custom_filter_new(filterRow, nullptr, nullptr));
        GtkFilterListModel* const filtered =
            gtk_filter_list_model_new(G_LIST_MODEL(g_object_ref(m_store)), GTK_FILTER(g_object_ref(m_filter)));
        m_sorted = gtk_sort_list_model_new(G_LIST_MODEL(filtered), nullptr);
        m_selection = GTK_SELECTION_MODEL(gtk_multi_selection_new(G_LIST_MODEL(m_sorted)));
        GtkWidget* const view = gtk_column_view_new(m_selection);
        for (int column = 0; column < workload::columns; ++column) addColumn(GTK_COLUMN_VIEW(view), column);
        GtkWidget* const scroller = gtk_scrolled_window_new();
        gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scroller), view);
        m_window = gtk_window_new();
        gtk_window_set_child(GTK_WINDOW(m_window), scroller);
        gtk_window_set_default_size(GTK_WINDOW(m_window), 1600, 900);
        gtk_window_present(GTK_WINDOW(m_window));
        for (const workload::Timer timer; timer.wall() < 1;) g_main_context_iteration(nullptr, FALSE);
        g_signal_connect(gtk_widget_get_frame_clock(m_window), "after-paint", G_CALLBACK(onFrame), nullptr);
    }

    static void addColumn(GtkColumnView* view, int column) {
        GtkListItemFactory* const factory = gtk_signal_list_item_factory_new();
        g_signal_connect(factory, "setup", G_CALLBACK(onSetup), nullptr);
        g_signal_connect(factory, "bind", G_CALLBACK(onBind), GINT_TO_POINTER(column));
        g_signal_connect(factory, "unbind", G_CALLBACK(onUnbind), nullptr);
        GtkColumnViewColumn* const made = gtk_column_view_column_new("c", factory);
        gtk_column_view_column_set_fixed_width(made, 76);
        gtk_column_view_append_column(view, made);
        g_object_unref(made);
    }

    void untilPainted() {
        const int before = frames;
        gtk_widget_queue_draw(m_window);
        for (const workload::Timer timer; frames == before;) {
            if (timer.wall() > 30) workload::wrong(peer, "nothing was painted in 30 s");
            if (!g_main_context_iteration(nullptr, FALSE)) g_usleep(100);
        }
    }

    void setFilter(Filter filter) {
        activeFilter = filter;
        gtk_filter_changed(m_filter, GTK_FILTER_CHANGE_DIFFERENT);
    }

    guint shown() { return g_list_model_get_n_items(G_LIST_MODEL(m_sorted)); }

    void ticks(const char* w, const char* variant, bool refilter) {
        std::vector<workload::Sample> samples;
        for (int i = 0; i < m_repeats; ++i) samples.push_back(tickOnce(refilter));
        workload::report({peer, w, m_count, variant}, 1e6, samples);
    }

    workload::Sample tickOnce(bool refilter) {
        constexpr int total = 1'000'000, batch = 1'000;
        constexpr double mostSeconds = 3;
        workload::Random random(workload::operationSeed + m_repeat++);
        const workload::Timer timer;
        double lastPaint = 0;
        int done = 0;
        while (done < total && timer.wall() < mostSeconds) {
            for (int i = 0; i < batch; ++i, ++done) {
                const workload::Tick tick = workload::nextTick(random, m_count);
                PeerRow* const row = m_rows[tick.row];
                row->data.d[0] = tick.d0;
                row->data.d[5] = tick.d5;
                row->data.n[0] = tick.n0;
                g_signal_emit(row, changedSignal, 0);
            }
            if (timer.wall() - lastPaint < 0.2) continue;
            if (refilter) setFilter(greater);
            pump();
            lastPaint = timer.wall();
        }
        if (refilter) setFilter(greater);
        untilPainted();
        const workload::Sample sample = timer.stop();
        return {sample.wall * total / done, sample.cpu * total / done};
    }

    struct Action {
        const char* variant;
        std::function<void()> undo, act;
        std::uint32_t shown;  // rows that must be there after it
    };
    void measure(const char* w, const Action& action) {
        constexpr double budget = 20;
        std::vector<workload::Sample> samples;
        double used = 0, inModel = 0;
        for (int i = 0; i < m_repeats && used < budget; ++i) {
            action.undo();
            untilPainted();
            pump();
            const workload::Timer timer;
            action.act();
            inModel = timer.wall();
            untilPainted();
            samples.push_back(timer.stop());
            used += samples.back().wall;
            if (shown() != action.shown) workload::wrong(peer, action.variant);
        }
        char note[80];
        std::snprintf(note, sizeof note, "model part of the last repeat %.2f ms", inModel * 1e3);
        workload::report({peer, w, m_count, action.variant}, 0, samples, note);
    }

    void filters() {
        struct {
            const char* variant;
            Filter filter;
        } const kinds[] = {{"prefix SYM0001", prefix}, {"contains 99", contains}, {"d0 > 500", greater}};
        for (const auto& kind : kinds) {
            std::uint32_t expected = 0;
            for (const PeerRow* row : m_rows) expected += passes(row->data, kind.filter);
            measure("W2", {kind.variant, [&] { setFilter(none); }, [&] { setFilter(kind.filter); }, expected});
        }
        setFilter(none);
    }

    void sorts() {
        struct {
            const char* variant;
            GtkSorter* sorter;
        } const kinds[] = {
            {"double (GtkNumericSorter)", numericSorter(G_CALLBACK(doubleKey))},
            {"integer (GtkNumericSorter)", numericSorter(G_CALLBACK(integerKey))},
            {"text plain (GtkCustomSorter)", GTK_SORTER(gtk_custom_sorter_new(compareText, nullptr, nullptr))}};
        for (const auto& kind : kinds) {
            measure("W3", {kind.variant, [&] { gtk_sort_list_model_set_sorter(m_sorted, nullptr); },
                           [&] { gtk_sort_list_model_set_sorter(m_sorted, kind.sorter); }, m_count});
        }
        gtk_sort_list_model_set_sorter(m_sorted, nullptr);
    }

    std::set<std::string> selectedSymbols() {
        std::set<std::string> symbols;
        GtkBitset* const selected = gtk_selection_model_get_selection(m_selection);
        for (guint i = 0; i < gtk_bitset_get_size(selected); ++i) {
            const guint place = gtk_bitset_get_nth(selected, i);
            symbols.insert(static_cast<PeerRow*>(g_list_model_get_item(G_LIST_MODEL(m_sorted), place))->data.symbol);
        }
        return symbols;
    }

    // Each repeat works on what the one before left.
    workload::Sample churnOnce(workload::Random& random) {
        gtk_selection_model_unselect_all(m_selection);
        for (const std::uint32_t row : workload::selectedRows(m_count))
            gtk_selection_model_select_item(m_selection, row, FALSE);
        untilPainted();
        const workload::Churn churn = workload::makeChurn(m_count, random);
        std::vector<PeerRow*> coming;
        for (const workload::Row& row : churn.coming) coming.push_back(rowOf(row));
        std::set<std::string> expected = selectedSymbols();
        for (const std::uint32_t row : churn.leaving) expected.erase(m_rows[row]->data.symbol);

        const workload::Timer timer;
        for (auto row = churn.leaving.rbegin(); row != churn.leaving.rend(); ++row) g_list_store_remove(m_store, *row);
        g_list_store_splice(m_store, m_count - workload::Churn::count, 0, reinterpret_cast<gpointer*>(coming.data()),
                            workload::Churn::count);
        untilPainted();
        const workload::Sample sample = timer.stop();
        if (selectedSymbols() != expected) workload::wrong(peer, "W4: the selection is wrong");
        for (auto row = churn.leaving.rbegin(); row != churn.leaving.rend(); ++row) m_rows.erase(m_rows.begin() + *row);
        m_rows.insert(m_rows.end(), coming.begin(), coming.end());
        return sample;
    }

    void churn() {
        std::vector<workload::Sample> samples;
        workload::Random random(workload::operationSeed);
        for (int i = 0; i < m_repeats; ++i) samples.push_back(churnOnce(random));
        workload::report({peer, "W4", m_count, "g_list_store_remove one by one + splice"}, 0, samples);
    }

    std::uint32_t m_count;
    int m_repeats;
    std::uint32_t m_repeat = 0;  // new operations for each run of ticks
    std::vector<PeerRow*> m_rows;
    GListStore* m_store = nullptr;
    GtkFilter* m_filter = nullptr;
    GtkSortListModel* m_sorted = nullptr;
    GtkSelectionModel* m_selection = nullptr;
    GtkWidget* m_window = nullptr;
};

}  // namespace

// bench_gtk [rows [repeats]]
int main(int argc, char** argv) {
    gtk_init();
    workload::reportVersion(peer, std::to_string(gtk_get_major_version()) + "." +
                                      std::to_string(gtk_get_minor_version()) + "." +
                                      std::to_string(gtk_get_micro_version()));
    Bench(argc > 1 ? std::uint32_t(std::atol(argv[1])) : 10'000, argc > 2 ? std::atoi(argv[2]) : 5).run();
}
