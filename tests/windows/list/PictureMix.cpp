#include "windows/list/PictureMix.h"

#include "support/PictureOracle.h"
#include "support/WindowFixture.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace list_tests {

namespace {

constexpr COLORREF kGrounds[] = {RGB(20, 20, 20), RGB(40, 40, 60)};
constexpr COLORREF kSelected = RGB(0, 90, 160), kFocused = RGB(200, 160, 0), kText = RGB(220, 220, 220);

}  // namespace

void paintRow(CCommonListCtrl& list, const DRAWITEMSTRUCT& item) {
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

PictureMix::PictureMix(CCommonListCtrl& list, RowOwner rows, unsigned seed)
    : m_list(list), m_rows(std::move(rows)), m_seed(seed), m_random(seed) {
    m_list.GetWindowRect(&m_place);
    m_list.GetParent()->ScreenToClient(&m_place);
}

std::string PictureMix::run() {
    const long steps = test::fromEnvironment("QUOR_PICTURE_STEPS", 500);
    for (long i = 0; i < steps; ++i) {
        const std::string name = step();
        test::pumpUntilIdle();
        const std::string fault = test::stalePixels(m_list);
        if (!fault.empty())
            return "seed " + std::to_string(m_seed) + ", step " + std::to_string(i) + ", " + name + ": " + fault;
    }
    return {};
}

std::string PictureMix::step() {
    std::string name;
    switch (pick(12)) {
        case 0:
        case 1:
        case 2:
            changeRows(name);
            break;
        case 3:
        case 4:
        case 5:
            select(name);
            break;
        case 6:
        case 7:
            scroll(name);
            break;
        case 8:
        case 9:
            useHeader(name);
            break;
        case 10:
            resize(name);
            break;
        default:
            showColumns(name);
            break;
    }
    return name;
}

void PictureMix::changeRows(std::string& name) {
    const int kind = rows() == 0 ? 0 : pick(8);
    switch (kind) {
        case 0:
        case 1:
        case 2:
            name = "insert";
            return m_rows.insert(pick(rows() + 1));
        case 3:
        case 4:
            name = "delete";
            m_list.DeleteItem(pickRow());
            return;
        case 5:
            name = pick(20) ? "delete the last" : "delete all";
            if (name == "delete all") {
                m_list.DeleteAllItems();
            } else {
                m_list.DeleteItem(rows() - 1);
            }
            return;
        default:
            name = "change";
            return m_rows.change(pickRow());
    }
}

void PictureMix::select(std::string& name) {
    if (rows() == 0) return;
    constexpr WPARAM kKeys[] = {VK_UP, VK_DOWN, VK_HOME, VK_END, VK_PRIOR, VK_NEXT};
    switch (pick(5)) {
        case 0:
            name = "key";
            m_list.SendMessage(WM_KEYDOWN, kKeys[pick(6)], 0);
            return;
        case 1:
            name = "focus";
            if (pick(2)) {
                m_list.SetFocus();
            } else {
                m_list.GetTopLevelParent()->SetFocus();
            }
            return;
        case 2:
            name = "state of all";
            m_list.SetItemState(-1, pick(2) ? LVIS_SELECTED : 0, LVIS_SELECTED);
            return;
        default: {
            name = "state of a row";
            const auto state = static_cast<UINT>(pick(4));
            m_list.SetItemState(pickRow(), state, LVIS_SELECTED | LVIS_FOCUSED);
            return;
        }
    }
}

void PictureMix::scroll(std::string& name) {
    if (rows() == 0) return;
    name = "scroll";
    switch (pick(3)) {
        case 0:
            m_list.EnsureVisible(pickRow(), FALSE);
            return;
        case 1:
            m_list.Scroll(CSize(0, (pick(21) - 10) * 17));
            return;
        default:
            m_list.Scroll(CSize((pick(21) - 10) * 10, 0));
            return;
    }
}

CRect PictureMix::item(int place) {
    CRect rect;
    header().GetItemRect(place, &rect);
    return rect;
}

// As the pointer would: down, two moves, up.
void PictureMix::mouseOnHeader(int from, int to) {
    const auto send = [&](UINT message, int x) {
        header().SendMessage(message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(x, 5));
    };
    send(WM_LBUTTONDOWN, from);
    if (from != to) {
        send(WM_MOUSEMOVE, (from + to) / 2);
        send(WM_MOUSEMOVE, to);
    }
    send(WM_LBUTTONUP, to);
}

void PictureMix::useHeader(std::string& name) {
    if (header().GetItemCount() == 0) return;
    const CRect first = item(pick(header().GetItemCount())), second = item(pick(header().GetItemCount()));
    const int middle = first.CenterPoint().x;
    switch (pick(5)) {
        case 0:
            name = "order";
            return setOrder();
        case 1:
            name = "sort";
            return mouseOnHeader(middle, middle);
        case 2:
            name = "width by the divider";
            return mouseOnHeader(first.right - 1, first.right - 1 + pick(61) - 30);
        case 3:
            name = "width";
            m_list.SetColumnWidth(pick(header().GetItemCount()), 20 + pick(150));
            return;
        default:
            name = "drag a heading";
            return mouseOnHeader(middle, second.left + pick(std::max(second.Width(), 1)));
    }
}

void PictureMix::setOrder() {
    std::vector<int> order(static_cast<std::size_t>(header().GetItemCount()));
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), m_random);
    m_list.SetColumnOrderArray(static_cast<int>(order.size()), order.data());
}

void PictureMix::resize(std::string& name) {
    name = "resize";
    CRect place = m_place;
    place.right -= pick(place.Width() / 2);
    place.bottom -= pick(place.Height() / 2);
    m_list.MoveWindow(place);
}

void PictureMix::showColumns(std::string& name) {
    name = "columns";
    std::vector<int> shown(4);
    std::iota(shown.begin(), shown.end(), 0);
    std::shuffle(shown.begin(), shown.end(), m_random);
    shown.resize(static_cast<std::size_t>(1 + pick(4)));
    CArray<int, int> columns, widths;
    for (const int column : shown) columns.Add(column), widths.Add(30 + pick(120));
    m_list.LoadHeaders(&columns, &widths);
}

}  // namespace list_tests
