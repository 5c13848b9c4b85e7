#include "support/PictureOracle.h"

#include "quor/platform/Framework.h"

#include <algorithm>
#include <commctrl.h>
#include <cstdlib>

namespace test {

namespace {

constexpr UINT kPaintNow = RDW_UPDATENOW | RDW_ALLCHILDREN;
constexpr UINT kPaintAllNow = kPaintNow | RDW_INVALIDATE | RDW_ERASE | RDW_FRAME;

RECT onScreen(HWND window) {
    RECT area{};
    ::GetWindowRect(window, &area);
    return area;
}

RECT clientOnScreen(HWND window) {
    RECT area{};
    ::GetClientRect(window, &area);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

// Outside its parents a window's context gives the pixels of whatever stands there.
RECT shownPart(HWND window) {
    RECT part = onScreen(window);
    for (HWND parent = ::GetAncestor(window, GA_PARENT); parent && parent != ::GetDesktopWindow();
         parent = ::GetAncestor(parent, GA_PARENT)) {
        const RECT client = clientOnScreen(parent);
        ::IntersectRect(&part, &part, &client);
    }
    return part;
}

BITMAPINFO topDown(const RECT& area) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = area.right - area.left;
    info.bmiHeader.biHeight = area.top - area.bottom;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

WindowShot shotOf(HWND window, const RECT& part) {
    WindowShot shot;
    shot.window = window;
    const RECT whole = onScreen(window), client = clientOnScreen(window);
    shot.clientOrigin = {client.left - part.left, client.top - part.top};
    CWindowDC from(CWnd::FromHandle(window));
    CDC memory;
    CBitmap section;
    void* bits = nullptr;
    const BITMAPINFO info = topDown(part);
    if (!memory.CreateCompatibleDC(&from) ||
        !section.Attach(::CreateDIBSection(from, &info, DIB_RGB_COLORS, &bits, nullptr, 0)))
        return shot;
    const SelectScope selected(memory, section);
    const int width = part.right - part.left, height = part.bottom - part.top;
    if (!memory.BitBlt(0, 0, width, height, &from, part.left - whole.left, part.top - whole.top, SRCCOPY)) return shot;
    ::GdiFlush();
    shot.picture.width = width;
    shot.picture.height = height;
    const auto* const first = static_cast<const std::uint32_t*>(bits);
    shot.picture.pixels.assign(first, first + static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (std::uint32_t& pixel : shot.picture.pixels) pixel |= 0xFF000000u;
    return shot;
}

void addShots(HWND window, std::vector<WindowShot>& shots) {
    const RECT part = shownPart(window);
    if (::IsRectEmpty(&part)) return;
    for (HWND child = ::GetWindow(window, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        if (::IsWindowVisible(child)) addShots(child, shots);
    shots.push_back(shotOf(window, part));
}

std::string classOf(HWND window) {
    char name[64] = "";
    ::GetClassNameA(window, name, sizeof name);
    return name;
}

std::string text(const RECT& area) {
    char text[64];
    std::snprintf(text, sizeof text, "(%ld,%ld)-(%ld,%ld)", area.left, area.top, area.right, area.bottom);
    return text;
}

std::string color(std::uint32_t pixel) {
    char text[8];
    std::snprintf(text, sizeof text, "%06x", static_cast<unsigned>(pixel & 0xFFFFFF));
    return text;
}

std::string differenceOf(const WindowShot& shown, const WindowShot& repainted) {
    const std::string name = classOf(shown.window);
    const WindowPicture &before = shown.picture, &after = repainted.picture;
    if (shown.window != repainted.window || before.pixels.size() != after.pixels.size() || before.width != after.width)
        return name + ": another window, or one of another size, after the repaint";
    if (before.pixels.empty()) return name + ": no picture could be taken";
    int count = 0;
    std::size_t firstAt = 0;
    RECT area{before.width, before.height, 0, 0};
    for (std::size_t at = 0; at < before.pixels.size(); ++at) {
        if (before.pixels[at] == after.pixels[at]) continue;
        if (count++ == 0) firstAt = at;
        const auto x = static_cast<LONG>(at) % before.width, y = static_cast<LONG>(at) / before.width;
        area = {std::min(area.left, x), std::min(area.top, y), std::max(area.right, x + 1),
                std::max(area.bottom, y + 1)};
    }
    if (count == 0) return {};
    ::OffsetRect(&area, -shown.clientOrigin.x, -shown.clientOrigin.y);
    return name + ": " + std::to_string(count) + " pixels differ in " + text(area) + "; the first shows " +
           color(before.pixels[firstAt]) + ", repainted " + color(after.pixels[firstAt]);
}

void keepPictures(const std::vector<WindowShot>& shown, const std::vector<WindowShot>& repainted) {
    const char* const folder = std::getenv("QUOR_PICTURES");
    if (!folder) return;
    for (std::size_t i = 0; i < std::min(shown.size(), repainted.size()); ++i) {
        const std::string stem = std::string(folder) + "/" + classOf(shown[i].window) + std::to_string(i);
        quorSavePng(shown[i].picture, (stem + "-shown.png").c_str());
        quorSavePng(repainted[i].picture, (stem + "-repainted.png").c_str());
    }
}

}  // namespace

std::vector<WindowShot> takeShots(HWND window) {
    std::vector<WindowShot> shots;
    addShots(window, shots);
    return shots;
}

std::string difference(const std::vector<WindowShot>& shown, const std::vector<WindowShot>& repainted) {
    if (shown.empty()) return "nothing of the window shows";
    if (shown.size() != repainted.size()) return "a repaint showed or hid a child";
    for (std::size_t i = 0; i < shown.size(); ++i)
        if (const std::string fault = differenceOf(shown[i], repainted[i]); !fault.empty()) return fault;
    return {};
}

std::string stalePixels(HWND window) {
    ::RedrawWindow(window, nullptr, nullptr, kPaintNow);
    const std::vector<WindowShot> shown = takeShots(window);
    ::RedrawWindow(window, nullptr, nullptr, kPaintAllNow);
    const std::vector<WindowShot> repainted = takeShots(window);
    const std::string fault = difference(shown, repainted);
    if (!fault.empty()) keepPictures(shown, repainted);
    return fault;
}

}  // namespace test
