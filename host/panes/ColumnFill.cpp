#include "host/panes/ColumnFill.h"

#include "host/panes/HostEntries.h"
#include "host/panes/WindowWatch.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace terminal {

namespace {

constexpr UINT kWmSettle = WM_APP + 41;
constexpr const char* kUsers = ",users";

// Of a column that takes the room, or did: its own width, with a word behind it if that is the user's.
std::string keyOf(int column) { return "Filled" + std::to_string(column); }

bool changesColumns(UINT message) {
    return message == LVM_INSERTCOLUMNA || message == LVM_INSERTCOLUMNW || message == LVM_DELETECOLUMN ||
           message == LVM_SETCOLUMNORDERARRAY || message == LVM_SETCOLUMNWIDTH;
}

}  // namespace

void ColumnFill::start(CCommonListCtrl& list, std::function<std::string()> section) {
    m_list = &list;
    m_section = std::move(section);
    watchWindow(list.m_hWnd,
                [this](const WindowMessage& message, const PassOn& passOn) { return onMessage(message, passOn); });
}

LRESULT ColumnFill::onMessage(const WindowMessage& message, const PassOn& passOn) {
    const LRESULT result = passOn();
    if (!::IsWindow(message.window)) return result;
    if (message.message == kWmSettle)
        settle();
    else if (message.message == WM_NOTIFY)
        onHeader(*reinterpret_cast<const NMHDR*>(message.lParam));
    else if (message.message == WM_SIZE || changesColumns(message.message))
        settleSoon();
    return result;
}

// The system's header speaks wide, the framework's forwards narrow.
void ColumnFill::onHeader(const NMHDR& news) {
    const CHeaderCtrl* const header = m_list->GetHeaderCtrl();
    if (!header || news.hwndFrom != header->m_hWnd) return;
    const auto is = [&news](auto... codes) { return ((news.code == static_cast<UINT>(codes)) || ...); };
    if (is(HDN_BEGINTRACKA, HDN_BEGINTRACKW, HDN_DIVIDERDBLCLICKA, HDN_DIVIDERDBLCLICKW)) {
        const int item = reinterpret_cast<const NMHEADERA&>(news).iItem;
        if (m_column == kNone || item != placeOf(m_column)) return;
        m_isUsers = true;
        keep();
    } else if (is(HDN_ENDDRAG, HDN_ENDTRACKA, HDN_ENDTRACKW, HDN_ITEMCHANGEDA, HDN_ITEMCHANGEDW)) {
        settleSoon();
    }
}

// Not at once: columns come one after the other, and a size may be that of a moment.
void ColumnFill::settleSoon() {
    if (!m_waiting && !m_sizing) m_waiting = ::PostMessageA(m_list->m_hWnd, kWmSettle, 0, 0) != FALSE;
}

void ColumnFill::begin() {
    m_read = m_section();
    for (int column = 0; column < m_list->m_arrOrder.GetCount(); ++column) store(column, "");
    m_column = kNone;
    settle();
}

int ColumnFill::ownWidth(int place) {
    if (m_waiting) settle();
    const int width = m_list->GetColumnWidth(place);
    return m_column != kNone && place == placeOf(m_column) && !m_isUsers && width == m_given ? m_own : width;
}

int ColumnFill::columnAtEnd() const {
    const CHeaderCtrl* const header = m_list->GetHeaderCtrl();
    const int count = header ? header->GetItemCount() : 0;
    return count > 0 ? header->OrderToIndex(count - 1) : kNone;
}

int ColumnFill::placeOf(int column) const {
    return column >= 0 && column < m_list->m_arrOrder.GetCount() ? m_list->m_arrOrder[column] : kNone;
}

int ColumnFill::roomBeside(int place) const {
    CRect client;
    m_list->GetClientRect(&client);
    int room = client.Width();
    for (int other = 0; other < m_list->GetHeaderCtrl()->GetItemCount(); ++other)
        if (other != place) room -= m_list->GetColumnWidth(other);
    return room;
}

std::optional<ColumnFill::Stored> ColumnFill::stored(int column) const {
    int own = 0, read = 0;
    const std::string text = setting(m_read.c_str(), keyOf(column).c_str());
    if (std::sscanf(text.c_str(), "%d%n", &own, &read) != 1 || own < 0) return {};
    return Stored{own, text.substr(static_cast<std::size_t>(read)) == kUsers};
}

void ColumnFill::store(int column, const std::string& text) {
    const std::string key = keyOf(column);
    if (setting(m_read.c_str(), key.c_str()) != text) keepSetting(m_read.c_str(), key.c_str(), text);
}

// What another run has left, or another watch of the same list: the width on screen is the list's own to keep. A column
// that took the room and does not stand last yet waits with its own width.
void ColumnFill::readSection(int last) {
    const std::string section = m_section();
    if (section == m_read) return;
    m_read = section;
    m_column = kNone;
    for (int column = 0; column < m_list->m_arrOrder.GetCount(); ++column) {
        const auto was = placeOf(column) >= 0 && column != last ? stored(column) : std::nullopt;
        if (was && !was->isUsers) m_list->SetColumnWidth(placeOf(column), was->own);
    }
}

void ColumnFill::take(int column, int width) {
    m_column = column;
    m_own = m_given = width;
    m_isUsers = false;
    if (const auto was = stored(column)) {
        m_own = was->own;
        m_isUsers = was->isUsers;
    }
}

// Another column stands last now. Whether the user has sized this one is remembered for its return.
void ColumnFill::giveBack() {
    const int place = placeOf(m_column);
    if (m_column == kNone || m_isUsers) return;
    if (place >= 0 && m_list->GetColumnWidth(place) == m_given) m_list->SetColumnWidth(place, m_own);
    store(m_column, "");
}

void ColumnFill::settle() {
    m_waiting = false;
    const int place = m_sizing || m_list->m_arrOrder.IsEmpty() ? kNone : columnAtEnd();
    const int last = place >= 0 ? m_list->GetOriginalColumnPosition(place) : kNone;
    if (last < 0) return;
    m_sizing = true;
    readSection(last);
    const int width = m_list->GetColumnWidth(place);
    if (m_column != last) {
        giveBack();
        take(last, width);
    }
    if (width != m_given) m_own = width;
    m_given = m_isUsers ? width : (std::max)(m_own, roomBeside(place));
    if (m_given != width) m_list->SetColumnWidth(place, m_given);
    keep();
    m_sizing = false;
}

// The user's widths are kept as well, and a width without room that is the one on screen needs no word.
void ColumnFill::keep() {
    const bool needed = m_isUsers || m_given != m_own;
    store(m_column, needed ? std::to_string(m_own) + (m_isUsers ? kUsers : "") : std::string());
}

}  // namespace terminal
