// The stand-in's state: one object for a header, owned by the table in FilterBar.cpp until the header's last message.
// Private to quor/platform/win.
#pragma once

#include "quor/platform/win/FilterBar.h"
#include "quor/platform/win/FilterBarRecord.h"
#include "quor/platform/win/core/FilterBarLayout.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace quor {

// Every notification may end the window or change its items: what is needed afterwards is looked up again.
class FilterBar {
public:
    FilterBar(HWND header, WNDPROC former);
    // Null for a header without a stand-in.
    static std::shared_ptr<FilterBar> of(HWND header);

    // FilterBar.cpp
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    // For custom draw while the bar has the captions painted: how far below the item's upper edge they begin, and which
    // of them somebody else has painted, edges and all.
    int captionOffset() const { return m_captionOffset; }
    void keepCaption(int item) { m_keptCaptions.push_back(item); }
    // FilterBarEdit.cpp
    static LRESULT CALLBACK editProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleEdit(HWND edit, UINT message, WPARAM wParam, LPARAM lParam);

private:
    // Empty: the message is the header's.
    using Answer = std::optional<LRESULT>;
    Answer answerAboutItems(UINT message, WPARAM wParam, LPARAM lParam);
    Answer answerAboutFilters(UINT message, WPARAM wParam, LPARAM lParam);
    // While the bar shows: painting, mouse, hit tests.
    Answer answerInBar(UINT message, WPARAM wParam, LPARAM lParam);
    Answer hitTest(HDHITTESTINFO& info) const;
    // The bar after the header took a message.
    void followHeader(UINT message, WPARAM wParam);

    // The header's own answer.
    LRESULT header(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    bool isAlive() const { return ::IsWindow(m_header); }
    HFONT font() const;
    void measure();
    void onStyleChanged();
    void layOutParent() const;
    LRESULT onLayout(LPARAM lParam);

    // Items.
    int itemCount() const { return static_cast<int>(header(HDM_GETITEMCOUNT)); }
    bool isItem(int item) const { return item >= 0 && item < itemCount(); }
    FilterRecord& record(int item);
    LRESULT onInsertItem(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT onDeleteItem(WPARAM wParam, LPARAM lParam);
    LRESULT onSetItem(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT onGetItem(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT clear(int item);
    void clearAll();

    // Places.
    int barTop() const;
    RECT itemRect(int item) const;
    FilterBarPlaces places(int item) const;
    // The item of a client point inside the bar, -1 elsewhere; flags HHT_ONFILTER or HHT_ONFILTERBUTTON.
    int hit(POINT point, UINT& flags) const;
    bool isInBar(POINT point) const;
    void invalidateBar() const;

    // Mouse.
    void press(POINT point);
    void pressButton(int item);
    bool setCursor() const;

    // The field that is open: FilterBarEdit.cpp
    bool openField(int item, bool discard);
    // Ends what is typed in the open field: told now, or dropped.
    void finishTyping(bool discard);
    void closeField(bool discard);
    void showRecordInField();
    void placeField();
    void onTyped();
    bool createEdit();
    LRESULT onEditKey(WPARAM key);
    // How far below the field's upper edge its line of text begins; the strip above is the edit's frame.
    int textTop(const RECT& field) const;
    void paintAbove(HWND edit) const;

    // Notifications to the header's parent; they return its answer.
    LRESULT notifyItem(UINT code, int item) const;
    void notifyChange(int item) const { notifyItem(HDN_FILTERCHANGE, item); }

    // FilterBarPaint.cpp
    struct Ground {
        HBRUSH brush;
        COLORREF text, back;
    };
    // What the header answers as the parent of fields (WM_CTLCOLOREDIT) and of the strip that they stand on
    // (WM_CTLCOLORSTATIC): the system's colours, unless somebody has subclassed it. Nothing stays selected.
    Ground ground(HDC dc, UINT message) const;
    void onPaint();
    void draw(HDC dc);
    void drawCaptions(HDC dc, const RECT& caption);
    void drawPictures(HDC dc, const RECT& caption) const;
    void drawCaptionEdges(HDC dc, const RECT& caption) const;
    void drawField(HDC dc, int item) const;
    void drawText(HDC dc, RECT field, const std::wstring& text, const Ground& look) const;
    void drawFunnel(HDC dc, const RECT& button, COLORREF inside, bool filled) const;

    HWND m_header;
    WNDPROC m_former;
    bool m_on = false;
    FilterBarMetrics m_metrics;
    int m_lineHeight = 0;
    std::vector<FilterRecord> m_records;  // by item index
    DWORD m_timeout = 1000;               // ms
    int m_pressed = -1;                   // the item whose button is down
    int m_captionOffset = 0;
    LRESULT m_pictures = 0;  // the header's image list, while it paints without it
    std::vector<int> m_keptCaptions;

    HWND m_edit = nullptr;
    WNDPROC m_editFormer = nullptr;
    int m_editItem = -1;
    bool m_typed = false;    // the field's text is not told yet
    bool m_filling = false;  // the change in the field is our own
};

}  // namespace quor
