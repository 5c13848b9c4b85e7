#include "support/PictureOracle.h"

#include "quor/platform/proving/WindowCapture.h"

#include <algorithm>
#include <cstdlib>

namespace test {

namespace {

constexpr UINT kPaintNow = RDW_UPDATENOW | RDW_ALLCHILDREN;
constexpr UINT kPaintAllNow = kPaintNow | RDW_INVALIDATE | RDW_ERASE | RDW_FRAME;

// What a window shows.
struct WindowShot {
    HWND window = nullptr;
    CSize clientOrigin;  // of the client area in the picture
    WindowPicture picture;
};
using Shots = std::vector<WindowShot>;

CRect onScreen(HWND window) {
    CRect area;
    ::GetWindowRect(window, &area);
    return area;
}

CRect clientOnScreen(HWND window) {
    CRect area;
    ::GetClientRect(window, &area);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

// Outside its parents a window's context gives the pixels of whatever stands there.
CRect shownPart(HWND window) {
    CRect part = onScreen(window);
    for (HWND parent = ::GetAncestor(window, GA_PARENT); parent && parent != ::GetDesktopWindow();
         parent = ::GetAncestor(parent, GA_PARENT))
        part &= clientOnScreen(parent);
    return part;
}

WindowShot shotOf(HWND window, const CRect& part) {
    WindowShot shot{window, clientOnScreen(window).TopLeft() - part.TopLeft(), {}};
    BITMAPINFO topDown{};
    topDown.bmiHeader = {sizeof topDown.bmiHeader, part.Width(), -part.Height(), 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    CWindowDC from(CWnd::FromHandle(window));
    CDC memory;
    CBitmap section;
    void* bits = nullptr;
    if (!memory.CreateCompatibleDC(&from) ||
        !section.Attach(::CreateDIBSection(from, &topDown, DIB_RGB_COLORS, &bits, nullptr, 0)))
        return shot;
    const SelectScope selected(memory, section);
    const CSize at = part.TopLeft() - onScreen(window).TopLeft();
    if (!memory.BitBlt(0, 0, part.Width(), part.Height(), &from, at.cx, at.cy, SRCCOPY)) return shot;
    ::GdiFlush();
    const auto* const first = static_cast<const std::uint32_t*>(bits);
    shot.picture = {part.Width(), part.Height(), {first, first + part.Width() * part.Height()}};
    for (std::uint32_t& pixel : shot.picture.pixels) pixel |= 0xFF000000u;
    return shot;
}

// The window's visible children, as they are stacked, and then the window, whose picture shows them too. Nothing is
// painted for it.
void addShots(HWND window, Shots& shots) {
    const CRect part = shownPart(window);
    if (part.IsRectEmpty()) return;
    for (HWND child = ::GetWindow(window, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        if (::IsWindowVisible(child)) addShots(child, shots);
    shots.push_back(shotOf(window, part));
}

Shots shotsAfter(UINT paints, HWND window) {
    Shots shots;
    ::RedrawWindow(window, nullptr, nullptr, paints);
    addShots(window, shots);
    return shots;
}

std::string classOf(HWND window) {
    char name[64] = "";
    ::GetClassNameA(window, name, sizeof name);
    return name;
}

std::string differenceOf(const WindowShot& shown, const WindowShot& repainted) {
    const std::string name = classOf(shown.window);
    const WindowPicture &before = shown.picture, &after = repainted.picture;
    if (shown.window != repainted.window || before.pixels.size() != after.pixels.size() || before.width != after.width)
        return name + ": another window, or one of another size, after the repaint";
    if (before.pixels.empty()) return name + ": no picture could be taken";
    int count = 0;
    std::size_t firstAt = 0;
    CRect area(before.width, before.height, 0, 0);
    for (std::size_t at = 0; at < before.pixels.size(); ++at) {
        if (before.pixels[at] == after.pixels[at]) continue;
        if (count++ == 0) firstAt = at;
        const auto x = static_cast<LONG>(at) % before.width, y = static_cast<LONG>(at) / before.width;
        area = {std::min(area.left, x), std::min(area.top, y), std::max(area.right, x + 1),
                std::max(area.bottom, y + 1)};
    }
    if (count == 0) return {};
    area -= shown.clientOrigin;
    char told[120];
    std::snprintf(told, sizeof told, ": %d pixels differ in (%ld,%ld)-(%ld,%ld); the first shows %08x, repainted %08x",
                  count, area.left, area.top, area.right, area.bottom, before.pixels[firstAt], after.pixels[firstAt]);
    return name + told;
}

void keepPictures(const Shots& shown, const Shots& repainted) {
    const char* const folder = std::getenv("QUOR_PICTURES");
    if (!folder) return;
    for (std::size_t i = 0; i < std::min(shown.size(), repainted.size()); ++i) {
        const std::string stem = std::string(folder) + "/" + classOf(shown[i].window) + std::to_string(i);
        quorSavePng(shown[i].picture, (stem + "-shown.png").c_str());
        quorSavePng(repainted[i].picture, (stem + "-repainted.png").c_str());
    }
}

}  // namespace

std::string stalePixels(HWND window) {
    const Shots shown = shotsAfter(kPaintNow, window), repainted = shotsAfter(kPaintAllNow, window);
    std::string fault = shown.empty()                      ? "nothing of the window shows"
                        : shown.size() != repainted.size() ? "a repaint showed or hid a child"
                                                           : "";
    for (std::size_t i = 0; fault.empty() && i < shown.size(); ++i) fault = differenceOf(shown[i], repainted[i]);
    if (!fault.empty()) keepPictures(shown, repainted);
    return fault;
}

}  // namespace test
