#include "host/panes/DarkMenus.h"

#include "host/panes/Theme.h"
#include "host/panes/WindowWatch.h"

#include <algorithm>
#include <cwctype>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace terminal {

using quor::platform::scaled;

namespace {

constexpr int kGutter = 24;  // left of a text, for ticks, and right of it, for the arrow of a further menu
constexpr int kPadding = 4, kBarPadding = 7, kSeparatorHeight = 7, kTabGap = 24;
constexpr int kArrow = 4, kBullet = 3, kTick = 4;

struct Item {
    std::wstring text;  // a tab stands before the key
    bool onBar = false, isSeparator = false, isRadio = false, hasMenu = false;
};

// By place; null: somebody else draws it.
using Items = std::vector<std::unique_ptr<Item>>;

struct Colours {
    COLORREF ground, text;
};

Colours coloursOf(UINT state) {
    const bool grey = state & (ODS_GRAYED | ODS_DISABLED), marked = state & (ODS_SELECTED | ODS_HOTLIGHT);
    if (grey) return {marked ? palette::kSelectionIdle : palette::kSurface, palette::kDim};
    return marked ? Colours{palette::kSelection, palette::kSelectedText} : Colours{palette::kSurface, palette::kText};
}

std::wstring textOf(HMENU menu, UINT place) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    if (!::GetMenuItemInfoW(menu, place, TRUE, &info)) return {};
    std::wstring text(info.cch++, L'\0');
    info.dwTypeData = text.data();
    return ::GetMenuItemInfoW(menu, place, TRUE, &info) ? text : std::wstring();
}

// 0: none.
wchar_t mnemonicOf(const std::wstring& text) {
    for (std::size_t at = text.find(L'&'); at + 1 < text.size(); at = text.find(L'&', at + 2))
        if (text[at + 1] != L'&') return static_cast<wchar_t>(std::towlower(text[at + 1]));
    return 0;
}

void setDrawn(HMENU menu, UINT place, UINT type, Item* item) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_DATA;
    info.fType = type;
    info.dwItemData = reinterpret_cast<ULONG_PTR>(item);
    ::SetMenuItemInfoW(menu, place, TRUE, &info);
}

MENUITEMINFOW kindOf(HMENU menu, UINT place) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_DATA | MIIM_SUBMENU;
    ::GetMenuItemInfoW(menu, place, TRUE, &info);
    return info;
}

// A child window has an id there.
HMENU menuBarOf(HWND window) { return ::GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD ? nullptr : ::GetMenu(window); }

UINT countOf(HMENU menu) { return static_cast<UINT>((std::max)(0, ::GetMenuItemCount(menu))); }

class DarkMenus {
public:
    explicit DarkMenus(HWND owner) : m_owner(owner) {
        NONCLIENTMETRICSA metrics{};
        metrics.cbSize = sizeof metrics;
        ::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
        m_font.CreateFontIndirect(&metrics.lfMenuFont);
    }

    void dress(HMENU menu, bool onBar);
    LRESULT onMessage(const WindowMessage& message, const PassOn& passOn);

private:
    void undress(HMENU menu);
    const Item* find(ULONG_PTR data) const;
    void measure(const Item& item, MEASUREITEMSTRUCT& size);
    void draw(const Item& item, const DRAWITEMSTRUCT& news);
    void drawText(CDC& dc, const Item& item, RECT area, COLORREF colour, bool hidesLetter);
    void drawMark(CDC& dc, const Item& item, const RECT& area, COLORREF colour);
    void drawArrow(CDC& dc, const RECT& area, COLORREF colour);
    LRESULT choose(HMENU menu, wchar_t letter) const;
    void paintBarsRest();

    HWND m_owner;
    CFont m_font;
    CBrush m_ground{palette::kSurface};
    std::map<HMENU, Items> m_items;
};

void DarkMenus::dress(HMENU menu, bool onBar) {
    undress(menu);
    Items& items = m_items[menu];
    for (UINT place = 0; place < countOf(menu); ++place) {
        const MENUITEMINFOW kind = kindOf(menu, place);
        items.push_back(nullptr);
        if (kind.fType & (MFT_OWNERDRAW | MFT_BITMAP)) continue;
        items.back() = std::make_unique<Item>(Item{textOf(menu, place), onBar, (kind.fType & MFT_SEPARATOR) != 0,
                                                   (kind.fType & MFT_RADIOCHECK) != 0, kind.hSubMenu != nullptr});
        setDrawn(menu, place, kind.fType | MFT_OWNERDRAW, items.back().get());
    }
    MENUINFO look{};
    look.cbSize = sizeof look;
    look.fMask = MIM_BACKGROUND;
    look.hbrBack = m_ground;
    ::SetMenuInfo(menu, &look);
}

// Items may have come and gone since they were dressed.
void DarkMenus::undress(HMENU menu) {
    const auto found = m_items.find(menu);
    if (found == m_items.end()) return;
    for (UINT place = 0; place < countOf(menu); ++place) {
        const MENUITEMINFOW kind = kindOf(menu, place);
        if (find(kind.dwItemData)) setDrawn(menu, place, kind.fType & ~static_cast<UINT>(MFT_OWNERDRAW), nullptr);
    }
    m_items.erase(found);
}

const Item* DarkMenus::find(ULONG_PTR data) const {
    for (const auto& [menu, items] : m_items)
        for (const auto& item : items)
            if (item && reinterpret_cast<ULONG_PTR>(item.get()) == data) return item.get();
    return nullptr;
}

void DarkMenus::measure(const Item& item, MEASUREITEMSTRUCT& size) {
    if (item.isSeparator) {
        size.itemHeight = static_cast<UINT>(scaled(m_owner, kSeparatorHeight));
        return;
    }
    CClientDC dc(nullptr);
    const SelectScope font(dc, m_font);
    CRect text;
    const UINT expanded = item.onBar ? 0u : static_cast<UINT>(DT_EXPANDTABS);
    ::DrawTextW(dc, item.text.c_str(), -1, &text, DT_SINGLELINE | DT_CALCRECT | expanded);
    const bool hasKey = item.text.find(L'\t') != std::wstring::npos;
    const int beside = item.onBar ? kBarPadding : 2 * kGutter + (hasKey ? kTabGap : 0);
    size.itemWidth = static_cast<UINT>(text.Width() + scaled(m_owner, beside));
    size.itemHeight = static_cast<UINT>(text.Height() + 2 * scaled(m_owner, kPadding));
}

void DarkMenus::draw(const Item& item, const DRAWITEMSTRUCT& news) {
    CDC& dc = *CDC::FromHandle(news.hDC);
    const Colours colours = coloursOf(news.itemState);
    const RECT& area = news.rcItem;
    if (item.isSeparator) {
        dc.FillSolidRect(&area, palette::kSurface);
        const int middle = (area.top + area.bottom) / 2;
        const RECT line{area.left, middle, area.right, middle + 1};
        return dc.FillSolidRect(&line, palette::kEdge);
    }
    dc.FillSolidRect(&area, colours.ground);
    drawText(dc, item, area, colours.text, (news.itemState & ODS_NOACCEL) != 0);
    if (item.onBar) return;
    if (news.itemState & ODS_CHECKED) drawMark(dc, item, area, colours.text);
    if (!item.hasMenu) return;
    drawArrow(dc, area, colours.text);
    dc.ExcludeClipRect(&area);  // or the system would draw an arrow of its own over it
}

void DarkMenus::drawText(CDC& dc, const Item& item, RECT area, COLORREF colour, bool hidesLetter) {
    const DcStateScope state(dc);
    dc.SelectObject(&m_font);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(colour);
    const UINT format = DT_SINGLELINE | DT_VCENTER | (hidesLetter ? static_cast<UINT>(DT_HIDEPREFIX) : 0u);
    const std::size_t tab = item.text.find(L'\t');
    const std::wstring text = item.text.substr(0, tab);
    if (!item.onBar) ::InflateRect(&area, -scaled(m_owner, kGutter), 0);
    ::DrawTextW(dc, text.c_str(), -1, &area, item.onBar ? format | DT_CENTER : format);
    if (tab != std::wstring::npos) ::DrawTextW(dc, item.text.c_str() + tab + 1, -1, &area, format | DT_RIGHT);
}

void DarkMenus::drawMark(CDC& dc, const Item& item, const RECT& area, COLORREF colour) {
    const int x = area.left + scaled(m_owner, kGutter) / 2, y = (area.top + area.bottom) / 2;
    const DcStateScope state(dc);
    CPen pen(PS_SOLID, scaled(m_owner, 2), colour);
    CBrush brush(colour);
    dc.SelectObject(&pen);
    dc.SelectObject(&brush);
    if (item.isRadio) {
        const int half = scaled(m_owner, kBullet);
        ::Ellipse(dc, x - half, y - half, x + half, y + half);
        return;
    }
    const int step = scaled(m_owner, kTick);
    const POINT tick[] = {{x - step, y}, {x - step / 3, y + step - step / 3}, {x + step, y - step + step / 3}};
    ::Polyline(dc, tick, static_cast<int>(std::size(tick)));
}

void DarkMenus::drawArrow(CDC& dc, const RECT& area, COLORREF colour) {
    const int half = scaled(m_owner, kArrow), middle = (area.top + area.bottom) / 2;
    const int left = area.right - scaled(m_owner, kGutter) / 2 - half / 2;
    for (int i = 0; i < half; ++i) {
        const RECT line{left + i, middle - (half - 1 - i), left + i + 1, middle + (half - i)};
        dc.FillSolidRect(&line, colour);
    }
}

// Not every system looks for the letters of items that it does not draw.
LRESULT DarkMenus::choose(HMENU menu, wchar_t letter) const {
    const auto found = m_items.find(menu);
    if (found == m_items.end()) return 0;
    const Items& items = found->second;
    const UINT count = static_cast<UINT>(items.size());
    UINT first = count, matches = 0, marked = count - 1;
    for (UINT place = 0; place < count; ++place)
        if (::GetMenuState(menu, place, MF_BYPOSITION) & MF_HILITE) marked = place;
    for (UINT step = 1; step <= count; ++step) {
        const UINT place = (marked + step) % count;
        if (!items[place] || mnemonicOf(items[place]->text) != std::towlower(letter)) continue;
        if (matches++ == 0) first = place;
    }
    return matches ? MAKELRESULT(first, matches == 1 ? MNC_EXECUTE : MNC_SELECT) : 0;
}

// Right of the last item, and the line below all.
void DarkMenus::paintBarsRest() {
    const HMENU menu = menuBarOf(m_owner);
    MENUBARINFO bar{};
    bar.cbSize = sizeof bar;
    CRect last, window;
    if (!menu || !::GetMenuBarInfo(m_owner, OBJID_MENU, 0, &bar) || countOf(menu) == 0 ||
        !::GetMenuItemRect(m_owner, menu, countOf(menu) - 1, &last))
        return;
    ::GetWindowRect(m_owner, &window);
    CRect rest(last.right, bar.rcBar.top, bar.rcBar.right, bar.rcBar.bottom);
    CRect line(bar.rcBar.left, bar.rcBar.bottom, bar.rcBar.right, bar.rcBar.bottom + 1);
    rest.OffsetRect(-window.left, -window.top);
    line.OffsetRect(-window.left, -window.top);
    CWindowDC dc(CWnd::FromHandle(m_owner));
    dc.FillSolidRect(&rest, palette::kSurface);
    dc.FillSolidRect(&line, palette::kSurface);
}

LRESULT DarkMenus::onMessage(const WindowMessage& message, const PassOn& passOn) {
    switch (message.message) {
        case WM_INITMENUPOPUP: {
            const LRESULT result = passOn();  // what stands in it may be settled just then
            const bool isSystems = HIWORD(message.lParam) != 0;
            if (::IsWindow(message.window) && !isSystems) dress(reinterpret_cast<HMENU>(message.wParam), false);
            return result;
        }
        case WM_UNINITMENUPOPUP:
            undress(reinterpret_cast<HMENU>(message.wParam));
            break;
        case WM_MEASUREITEM: {
            auto& size = *reinterpret_cast<MEASUREITEMSTRUCT*>(message.lParam);
            const Item* const item = size.CtlType == ODT_MENU ? find(size.itemData) : nullptr;
            if (!item) break;
            measure(*item, size);
            return TRUE;
        }
        case WM_DRAWITEM: {
            const auto& news = *reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam);
            const Item* const item = news.CtlType == ODT_MENU ? find(news.itemData) : nullptr;
            if (!item) break;
            draw(*item, news);
            return TRUE;
        }
        case WM_MENUCHAR:
            if (const LRESULT chosen = choose(reinterpret_cast<HMENU>(message.lParam), LOWORD(message.wParam)))
                return chosen;
            break;
        case WM_NCPAINT:
        case WM_NCACTIVATE: {
            const LRESULT result = passOn();
            paintBarsRest();
            return result;
        }
        default:
            break;
    }
    return passOn();
}

}  // namespace

void darkenMenus(HWND owner) {
    const auto menus = std::make_shared<DarkMenus>(owner);
    watchWindow(owner, [menus](const WindowMessage& message, const PassOn& passOn) {
        return menus->onMessage(message, passOn);
    });
    const HMENU bar = menuBarOf(owner);
    if (!bar) return;
    menus->dress(bar, true);
    ::DrawMenuBar(owner);
}

}  // namespace terminal
