// A filter bar for column headers whose system has none: under each caption a text field and a funnel button.
//
// On Windows the header brings it (style HDS_FILTERBAR); elsewhere the same window class may know the messages and do
// nothing. The stand-in subclasses such a header and keeps the system's contract to the letter, so that its users need
// not know which of the two they talk to:
//
// - The style bit switches the bar on and off, also by SetWindowLong; HDM_LAYOUT asks for the greater height. A list
//   view is laid out anew at once, any other parent does that itself.
// - HDM_SETITEM and HDM_GETITEM with HDI_FILTER write and read an item's filter, in the A and the W form. The record's
//   cchTextMax counts the final null: when writing it is also the limit of what can be typed (0 or less: no change;
//   1,048,575 characters at first), when reading it is the size of the buffer.
// - HDM_CLEARFILTER empties one item or, with -1, all. HDM_EDITFILTER opens an item's field (-1 closes it); what was
//   typed into another field before is kept unless the low word of lParam is TRUE. Both return 1, or 0 for no such
//   item.
// - HDN_FILTERCHANGE (NMHEADER without an item record) goes to the header's parent: from HDM_SETITEM and
//   HDM_CLEARFILTER before they return, whether or not the text differs; after the last key when the time of
//   HDM_SETFILTERCHANGETIMEOUT (1000 ms at first) has passed, or at once on Enter, or when the field loses the focus.
//   Clearing all notifies once for each item that had text, or once with item -1 if none had.
// - HDN_FILTERBTNCLICK (NMHDFILTERBTNCLICK, rectangle in the header's client area) comes when the funnel is pressed;
//   the answer TRUE is followed by HDN_FILTERCHANGE.
// - Esc drops what was typed and not yet told and gives the focus to the header's parent. Tab is not used: the parent
//   chain's PreTranslateMessage sees it first, and the field ignores it.
// - The field's edit control is a direct child of the header and fills the field.
#pragma once

#include "quor/platform/Framework.h"

namespace quor {

// Gives the header a bar if the system's own is missing. Harmless for a null handle, a header that has one already or a
// window that is still being created; nothing happens while the system cannot be asked. The stand-in ends with the
// window.
void attachFilterBar(HWND header);
// The same for the header of a list view, if the list has one by now.
void attachFilterBarOfList(HWND list);

// What a header class said when it was tried out on a hidden window of its own. unknown: it could not be asked, as
// there is no such class yet or no window to be had.
enum class BarAnswer { unknown, none, own };
QUOR_FRAMEWORK_API BarAnswer probeFilterBar(LPCSTR headerClass);

// Remembers an answer; while there is none, each question is asked anew.
class HeaderClassProbe {
public:
    explicit HeaderClassProbe(LPCSTR headerClass) : m_class(headerClass) {}
    BarAnswer answer() {
        if (m_answer == BarAnswer::unknown) m_answer = probeFilterBar(m_class);
        return m_answer;
    }

private:
    LPCSTR m_class;
    BarAnswer m_answer = BarAnswer::unknown;
};

}  // namespace quor
