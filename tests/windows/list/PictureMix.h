// Random handling of a list by its user and its owner; after each step the screen must show what a full repaint would.
#pragma once

#include "quor/list/CommonListCtrl.h"
#include "support/PictureOracle.h"
#include "support/Rounds.h"
#include "support/WindowFixture.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace list_tests {

// Paints a row as hosts do: its ground over the whole width of the window, by its number, selection and focus; then
// each cell where the header has it.
inline void paintRow(CCommonListCtrl& list, const DRAWITEMSTRUCT& item) {
    constexpr COLORREF kGrounds[] = {RGB(20, 20, 20), RGB(40, 40, 60)};
    constexpr COLORREF kSelected = RGB(0, 90, 160), kFocused = RGB(200, 160, 0), kText = RGB(220, 220, 220);
    CDC& dc = *CDC::FromHandle(item.hDC);
    const DcStateScope state(dc);
    CRect client, row = item.rcItem;
    list.GetClientRect(&client);
    row.left = client.left;
    row.right = client.right;
    dc.FillSolidRect(&row, (item.itemState & ODS_SELECTED) ? kSelected : kGrounds[item.itemID % 2]);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor((item.itemState & ODS_FOCUS) ? kFocused : kText);
    for (int place = 0; place < list.GetHeaderCtrl()->GetItemCount(); ++place) {
        CRect cell;
        list.GetHeaderCtrl()->GetItemRect(place, &cell);
        list.GetHeaderCtrl()->ClientToScreen(&cell);
        list.ScreenToClient(&cell);
        cell.top = row.top;
        cell.bottom = row.bottom;
        dc.DrawText(list.GetItemText(static_cast<int>(item.itemID), place), &cell,
                    DT_LEFT | DT_NOPREFIX | DT_SINGLELINE);
    }
}

// What the owner of the rows does.
struct RowOwner {
    using OnRow = std::function<void(int row)>;
    OnRow insert;
    OnRow change;                              // changes the texts of one and has it repainted as owners do
    OnRow remove = {};                         // without it the list is told to
    std::function<void()> clear = {};          // likewise
    std::function<std::string()> settle = {};  // brings about what is owed before a look; a fault, or empty
};

class PictureMix {
public:
    struct Step {
        int weight;
        const char* name;
        bool onRow;  // without rows one is inserted in its place
        std::function<void()> run;
    };

    PictureMix(CCommonListCtrl& list, RowOwner owner, unsigned seed, std::vector<Step> more = {})
        : m_list(list), m_owner(std::move(owner)), m_seed(seed), m_random(seed) {
        if (!m_owner.remove) m_owner.remove = [this](int row) { m_list.DeleteItem(row); };
        if (!m_owner.clear) m_owner.clear = [this] { m_list.DeleteAllItems(); };
        std::ranges::move(more, std::back_inserter(m_steps));
        for (const Step& step : m_steps) m_allWeights += step.weight;
    }

    // Empty, or the first step after which the picture was stale: its seed, its name and what differed.
    std::string run(long steps = test::fromEnvironment("QUOR_PICTURE_STEPS", 500)) {
        for (long i = 0; i < steps; ++i) {
            const char* const name = step();
            test::pumpUntilIdle();
            std::string fault = m_owner.settle ? m_owner.settle() : "";
            if (fault.empty()) fault = test::stalePixels(m_list);
            if (fault.empty()) continue;
            return "seed " + std::to_string(m_seed) + ", step " + std::to_string(i) + ", " + name + ": " + fault;
        }
        return {};
    }

    // The name of the one that was taken.
    const char* step() {
        const Step* step = m_steps.data();
        for (int left = pick(m_allWeights) - step->weight; left >= 0; left -= step->weight) ++step;
        if (step->onRow && m_list.GetItemCount() == 0) step = m_steps.data();
        step->run();
        return step->name;
    }
    int pick(int below) { return std::uniform_int_distribution<int>(0, below - 1)(m_random); }
    void changeState() { m_list.SetItemState(row(), static_cast<UINT>(pick(4)), kStates); }

private:
    int upTo(int most) { return pick(2 * most + 1) - most; }
    int row() { return pick(m_list.GetItemCount()); }
    CHeaderCtrl& header() { return *m_list.GetHeaderCtrl(); }
    CRect heading() {
        CRect rect;
        header().GetItemRect(pick(header().GetItemCount()), &rect);
        return rect;
    }
    std::vector<int> shuffled(int count) {
        std::vector<int> numbers(static_cast<std::size_t>(count));
        std::iota(numbers.begin(), numbers.end(), 0);
        std::shuffle(numbers.begin(), numbers.end(), m_random);
        return numbers;
    }

    void key() {
        constexpr WPARAM keys[] = {VK_UP, VK_DOWN, VK_HOME, VK_END, VK_PRIOR, VK_NEXT};
        m_list.SendMessage(WM_KEYDOWN, keys[pick(6)], 0);
    }
    // As the pointer would: down, two moves if it moves at all, up.
    void mouseOnHeader(int from, int by = 0) {
        const auto send = [&](UINT message, int x) {
            header().SendMessage(message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(x, 5));
        };
        send(WM_LBUTTONDOWN, from);
        if (by != 0) {
            send(WM_MOUSEMOVE, from + by / 2);
            send(WM_MOUSEMOVE, from + by);
        }
        send(WM_LBUTTONUP, from + by);
    }
    void dragHeading() {
        const CRect target = heading();
        const int from = heading().CenterPoint().x;
        mouseOnHeader(from, target.left + pick(std::max(target.Width(), 1)) - from);
    }
    void setOrder() {
        std::vector<int> order = shuffled(header().GetItemCount());
        const int count = static_cast<int>(order.size());
        pick(2) ? m_list.SetColumnOrderArray(count, order.data()) : header().SetOrderArray(count, order.data());
    }
    void showColumns() {
        std::vector<int> shown = shuffled(4);
        shown.resize(static_cast<std::size_t>(1 + pick(4)));
        CArray<int, int> columns, widths;
        for (const int column : shown) columns.Add(column), widths.Add(30 + pick(120));
        m_list.LoadHeaders(&columns, &widths);
    }
    void resize() {
        if (m_area.IsRectNull()) {
            m_list.GetWindowRect(&m_area);
            m_list.GetParent()->ScreenToClient(&m_area);
        }
        CRect area = m_area;
        area.right -= pick(area.Width() / 2);
        area.bottom -= pick(area.Height() / 2);
        m_list.MoveWindow(area);
    }

    static constexpr UINT kStates = LVIS_SELECTED | LVIS_FOCUSED;

    CCommonListCtrl& m_list;
    RowOwner m_owner;
    unsigned m_seed;
    std::mt19937 m_random;
    CRect m_area;
    int m_allWeights = 0;
    std::vector<Step> m_steps = {
        {45, "insert", false, [this] { m_owner.insert(pick(m_list.GetItemCount() + 1)); }},
        {30, "delete", true, [this] { m_owner.remove(row()); }},
        {14, "delete the last", true, [this] { m_owner.remove(m_list.GetItemCount() - 1); }},
        {1, "delete all", true, [this] { m_owner.clear(); }},
        {30, "change", true, [this] { m_owner.change(row()); }},
        {24, "key", true, [this] { key(); }},
        {12, "focus", true, [this] { m_list.SetFocus(); }},
        {12, "focus elsewhere", true, [this] { m_list.GetTopLevelParent()->SetFocus(); }},
        {12, "select all", true, [this] { m_list.SetItemState(-1, LVIS_SELECTED, LVIS_SELECTED); }},
        {12, "select none", true, [this] { m_list.SetItemState(-1, 0, LVIS_SELECTED); }},
        {47, "state of a row", true, [this] { changeState(); }},
        {27, "scroll to a row", true, [this] { m_list.EnsureVisible(row(), FALSE); }},
        {27, "scroll", true,
         [this] {
             m_list.Scroll({0, upTo(10) * 17});
         }},
        {27, "scroll sideways", true,
         [this] {
             m_list.Scroll({upTo(10) * 10, 0});
         }},
        {16, "order", false, [this] { setOrder(); }},
        {16, "sort", false, [this] { mouseOnHeader(heading().CenterPoint().x); }},
        {16, "width by the divider", false, [this] { mouseOnHeader(heading().right - 1, upTo(30)); }},
        {16, "width", false, [this] { m_list.SetColumnWidth(pick(header().GetItemCount()), 20 + pick(150)); }},
        {16, "drag a heading", false, [this] { dragHeading(); }},
        {40, "resize", false, [this] { resize(); }},
        {40, "columns", false, [this] { showColumns(); }},
    };
};

}  // namespace list_tests
