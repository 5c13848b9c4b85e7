// A header item's record that carries nothing but its filter text, to be set or read: the A form or the W form.
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/base/WinTypes.h"

#include <commctrl.h>

namespace quor {

// The buffer is borrowed; its size is in characters, the terminator included. A text to be set ends with NUL.
template <class Item, class Filter>
class FilterTextItem {
public:
    template <class Character>
    FilterTextItem(Character* buffer, int size) : m_filter{buffer, size} {
        m_item.mask = HDI_FILTER;
        m_item.type = HDFT_ISSTRING;
        m_item.pvFilter = &m_filter;
    }
    FilterTextItem(const FilterTextItem&) = delete;
    FilterTextItem& operator=(const FilterTextItem&) = delete;

    // HDM_SETITEM or HDM_GETITEM of the record's form.
    void send(HWND header, UINT message, int place) {
        ::SendMessageA(header, message, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&m_item));
    }

private:
    Filter m_filter;
    Item m_item{};
};

using NarrowFilterItem = FilterTextItem<HDITEMA, HD_TEXTFILTERA>;
using WideFilterItem = FilterTextItem<HDITEMW, HD_TEXTFILTERW>;

}  // namespace quor
