// QuorGallery: a picture of each control in each state, and one sheet of them all, for the screen's resolution.
//   QuorGallery --out FOLDER
// Exit code 0: every picture was written; 1: one was not, or shows nothing; 2: a wrong command line.
#include "host/gallery/Exhibits.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/platform/proving/WindowCapture.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

// The one entry of a host that the exhibits need: themes come by it.
extern "C" __declspec(dllexport) HMODULE quoru_call_LoadLibrary(const char* fileName) {
    return ::LoadLibraryA(fileName);
}

namespace gallery {

namespace {

constexpr int kStageWidth = 340, kStageHeight = 200, kLabelHeight = 20;
constexpr int kColumns = 4;
constexpr std::uint32_t kGround = 0xFFFFFFFF;

void pump() {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE))
        if (!AfxPumpMessage()) return;
}

// Pixels outside the target are dropped.
void paste(WindowPicture& target, const WindowPicture& picture, int left, int top) {
    for (int y = std::max(0, -top); y < picture.height && top + y < target.height; ++y)
        for (int x = std::max(0, -left); x < picture.width && left + x < target.width; ++x)
            target.pixels[static_cast<std::size_t>(top + y) * static_cast<std::size_t>(target.width) +
                          static_cast<std::size_t>(left + x)] =
                picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                               static_cast<std::size_t>(x)];
}

WindowPicture emptyPicture(int width, int height) {
    WindowPicture picture;
    picture.width = width;
    picture.height = height;
    picture.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), kGround);
    return picture;
}

bool showsNothing(const WindowPicture& picture) {
    return std::all_of(picture.pixels.begin(), picture.pixels.end(),
                       [&](std::uint32_t pixel) { return pixel == picture.pixels.front(); });
}

// What the timer of a modal exhibit takes. One at a time.
struct {
    HWND owner = nullptr;
    WindowPicture picture;
} g_modal;

void CALLBACK takeModal(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = ::GetLastActivePopup(g_modal.owner);
    if (dialog == g_modal.owner) return;  // not yet
    ::KillTimer(nullptr, timer);
    ::RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    quorCaptureClientArea(dialog, g_modal.picture);
    ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
}

bool takeDialog(CWnd& frame, const Exhibit& exhibit, WindowPicture& picture) {
    constexpr UINT kPeriod = 50;
    Stage stage{frame, {}, nullptr};
    g_modal = {frame.m_hWnd, {}};
    ::SetTimer(nullptr, 0, kPeriod, &takeModal);
    exhibit.show(stage);
    picture = emptyPicture(quor::platform::scaled(frame, kStageWidth), quor::platform::scaled(frame, kStageHeight));
    paste(picture, g_modal.picture, 0, 0);
    return !g_modal.picture.pixels.empty();
}

// False: the window could not be read.
bool take(CWnd& frame, const Exhibit& exhibit, WindowPicture& picture) {
    if (exhibit.modal) return takeDialog(frame, exhibit, picture);
    const auto pixels = [&](int length) { return quor::platform::scaled(frame, length); };
    CWnd window;
    window.Create(AfxRegisterWndClass(0, nullptr, ::GetSysColorBrush(COLOR_BTNFACE)), nullptr, WS_CHILD | WS_VISIBLE,
                  CRect(0, 0, pixels(kStageWidth), pixels(kStageHeight)), &frame, 1);
    frame.SetFocus();
    Stage stage{window, {}, nullptr};
    exhibit.show(stage);
    pump();
    window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    const bool taken = quorCaptureClientArea(window, picture);
    WindowPicture popup;
    if (stage.popup && ::RedrawWindow(stage.popup, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW) &&
        quorCaptureClientArea(stage.popup, popup)) {
        POINT corner = {0, 0};
        ::MapWindowPoints(stage.popup, window, &corner, 1);
        paste(picture, popup, corner.x, corner.y);
    }
    return taken;
}

// The exhibit's name above its picture.
bool label(CWnd& frame, const std::string& text, WindowPicture& picture) {
    const int height = quor::platform::scaled(frame, kLabelHeight);
    CStatic line;
    line.Create(text.c_str(), WS_CHILD | WS_VISIBLE, CRect(0, 0, picture.width, height), &frame, 2);
    CFont font;
    font.CreatePointFont(80, "Tahoma");
    line.SetFont(&font);
    line.UpdateWindow();
    WindowPicture written;
    if (!quorCaptureClientArea(line, written)) return false;
    WindowPicture both = emptyPicture(picture.width, picture.height + height);
    paste(both, written, 0, 0);
    paste(both, picture, 0, height);
    picture = std::move(both);
    return true;
}

class Gallery {
public:
    Gallery(CWnd& frame, std::string folder)
        : m_frame(frame),
          m_folder(std::move(folder)),
          m_dots(std::to_string(quor::platform::scaled(frame, quor::platform::kDotsPerInch))) {}

    void add(const Exhibit& exhibit) {
        WindowPicture picture;
        const std::string name = std::string(exhibit.control) + "-" + exhibit.state;
        if (!take(m_frame, exhibit, picture) || showsNothing(picture)) return fail(name, "shows nothing");
        save(picture, name);
        if (label(m_frame, std::string(exhibit.control) + ": " + exhibit.state, picture)) m_pictures.push_back(picture);
    }
    void addSheet() {
        if (m_pictures.empty()) return;
        const int width = m_pictures[0].width, height = m_pictures[0].height;
        const int rows = (static_cast<int>(m_pictures.size()) + kColumns - 1) / kColumns;
        WindowPicture sheet = emptyPicture(width * kColumns, height * rows);
        for (int i = 0; i < static_cast<int>(m_pictures.size()); ++i)
            paste(sheet, m_pictures[static_cast<std::size_t>(i)], i % kColumns * width, i / kColumns * height);
        save(sheet, "sheet");
    }
    bool complete() const { return m_complete; }
    int count() const { return static_cast<int>(m_pictures.size()); }

private:
    void save(const WindowPicture& picture, std::string name) {
        std::replace(name.begin(), name.end(), ' ', '_');
        CString error;
        const std::string path = m_folder + "\\" + name + "-" + m_dots + ".png";
        if (!quorSavePng(picture, path.c_str(), &error)) fail(name, error);
    }
    void fail(const std::string& name, const char* why) {
        m_complete = false;
        std::fprintf(stderr, "%s: %s\n", name.c_str(), why);
    }

    CWnd& m_frame;
    std::string m_folder;
    std::string m_dots;
    std::vector<WindowPicture> m_pictures;
    bool m_complete = true;
};

int run(const char* folder) {
    CFrameWnd* const frame = new CFrameWnd;  // deletes itself with its window
    frame->Create(nullptr, "Gallery", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 1000, 700));
    AfxSetMainWnd(frame);
    pump();
    Gallery shown(*frame, folder);
    for (const Exhibit& exhibit : exhibits()) shown.add(exhibit);
    shown.addSheet();
    frame->DestroyWindow();
    std::printf("%d pictures\n", shown.count());
    return shown.complete() ? 0 : 1;
}

}  // namespace

}  // namespace gallery

int main(int count, char** arguments) {
    if (count != 3 || std::strcmp(arguments[1], "--out") != 0) {
        std::fputs("usage: QuorGallery --out FOLDER\n", stderr);
        return 2;
    }
    if (!quor::useOwnDesktop("quor-gallery")) return 1;
    return gallery::run(arguments[2]);
}
