// QuorGallery: a picture of each control in each state, and one sheet of them all, for the screen's resolution.
//   QuorGallery --out FOLDER
// Exit code 0: every picture was written; 1: one was not, or shows nothing; 2: a wrong command line.
#include "host/gallery/Exhibits.h"
#include "host/gallery/Sheet.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/platform/proving/WindowCapture.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

// The entries of a host that the exhibits need: themes come by the first, dialogs ask for an icon and for a client's
// name, lists for what is stored. There is nothing stored, and everything can be.
#define GALLERY_ENTRY extern "C" __declspec(dllexport)
GALLERY_ENTRY HMODULE quoru_call_LoadLibrary(const char* fileName) { return ::LoadLibraryA(fileName); }
GALLERY_ENTRY HICON pu_get_application_iCon() { return ::LoadIcon(nullptr, IDI_APPLICATION); }
GALLERY_ENTRY int quoru_get_app_status() { return 0; }
GALLERY_ENTRY int UserSetting(int operation, CString, CString&, CString) { return operation != 0; }

namespace gallery {

namespace {

constexpr int kSheetWidth = 1500, kSheetGap = 16;
constexpr const char* kFont = "MS Shell Dlg";
constexpr int kPoints = 8, kHeadingPoints = 12;
constexpr int kOverhang = 2;              // of a last letter, beyond its advance
constexpr ULONGLONG kLongestWait = 5000;  // ms until the messages of an exhibit have run out

// False: there is always one more.
bool pump() {
    const ULONGLONG begin = ::GetTickCount64();
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE))
        if (!AfxPumpMessage() || ::GetTickCount64() - begin > kLongestWait) return false;
    return true;
}

bool showsNothing(const WindowPicture& picture) {
    return std::all_of(picture.pixels.begin(), picture.pixels.end(),
                       [&](std::uint32_t pixel) { return pixel == picture.pixels.front(); });
}

void repaint(HWND window) {
    ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

// While it lives, modal dialogs are cancelled, since nobody else would answer. Of one that is wanted the picture is
// taken first; any other one is a failure. One at a time.
class ModalWatch {
public:
    explicit ModalWatch(WindowPicture* wanted) : m_wanted(wanted), m_timer(::SetTimer(nullptr, 0, kPeriod, &look)) {
        s_current = this;
    }
    ~ModalWatch() {
        ::KillTimer(nullptr, m_timer);
        s_current = nullptr;
    }
    ModalWatch(const ModalWatch&) = delete;
    ModalWatch& operator=(const ModalWatch&) = delete;

    bool failed() const { return m_failed; }

private:
    static constexpr UINT kPeriod = 10;  // ms

    static void CALLBACK look(HWND, UINT, UINT_PTR, DWORD) { ::EnumThreadWindows(::GetCurrentThreadId(), &answer, 0); }
    static BOOL CALLBACK answer(HWND window, LPARAM) {
        const HWND owner = ::GetWindow(window, GW_OWNER);
        if (!owner || ::IsWindowEnabled(owner) || !::IsWindowVisible(window)) return TRUE;
        s_current->cancel(window);
        return FALSE;
    }
    void cancel(HWND dialog) {
        if (m_wanted && m_wanted->pixels.empty()) {
            repaint(dialog);
            m_failed = !quorCaptureWindow(dialog, *m_wanted);
        } else if (!m_wanted) {
            m_failed = true;
        }
        ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    }

    inline static ModalWatch* s_current = nullptr;
    WindowPicture* m_wanted;
    UINT_PTR m_timer;
    bool m_failed = false;
};

// What stands in a window of its own, over the picture of another one.
void addPopup(HWND popup, HWND window, WindowPicture& picture) {
    WindowPicture above;
    repaint(popup);
    if (!quorCaptureWindow(popup, above)) return;
    RECT place{};
    ::GetWindowRect(popup, &place);
    ::MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    paste(picture, above, place.left, place.top);
}

// Null, or why there is no picture.
const char* take(CWnd& frame, CFont& font, const Exhibit& exhibit, WindowPicture& picture) {
    const auto pixels = [&](int length) { return quor::platform::scaled(frame, length + 2 * kAir); };
    CWnd window;
    window.Create(AfxRegisterWndClass(0, nullptr, ::GetSysColorBrush(COLOR_BTNFACE)), nullptr, WS_CHILD | WS_VISIBLE,
                  CRect(0, 0, pixels(exhibit.size.cx), pixels(exhibit.size.cy)), &frame, 1);
    frame.SetFocus();
    Stage stage{window, font, {}, nullptr, nullptr};
    const ModalWatch watch(exhibit.modal ? &picture : nullptr);
    exhibit.show(stage);
    if (!pump()) return "does not come to rest";
    if (watch.failed()) return "opened a dialog that nobody wanted";
    if (exhibit.modal) return picture.pixels.empty() ? "did not open" : nullptr;
    const HWND shown = stage.dialog ? stage.dialog : window.m_hWnd;
    repaint(shown);
    const bool taken = stage.dialog ? quorCaptureWindow(shown, picture) : quorCaptureClientArea(shown, picture);
    if (taken && stage.popup) addPopup(stage.popup, window, picture);
    return taken ? nullptr : "cannot be read";
}

class Gallery {
public:
    Gallery(CWnd& frame, std::string folder)
        : m_frame(frame),
          m_folder(std::move(folder)),
          m_dots(std::to_string(quor::platform::scaled(frame, quor::platform::kDotsPerInch))),
          m_sheet(quor::platform::scaled(frame, kSheetWidth), quor::platform::scaled(frame, kSheetGap), ground()) {
        makeFont(m_font, kPoints, FW_NORMAL);
        makeFont(m_headingFont, kHeadingPoints, FW_BOLD);
    }

    void add(const Exhibit& exhibit) {
        WindowPicture picture;
        const std::string name = std::string(exhibit.control) + "-" + exhibit.state;
        const char* const failure = take(m_frame, m_font, exhibit, picture);
        if (failure || showsNothing(picture)) return fail(name, failure ? failure : "shows nothing");
        save(picture, name);
        if (m_control != exhibit.control) m_sheet.addHeading(written(exhibit.control, m_headingFont));
        m_control = exhibit.control;
        m_sheet.add(written(exhibit.state, m_font), picture);
        ++m_count;
    }
    void saveSheet() { save(m_sheet.finished(), "sheet"); }
    bool complete() const { return m_complete; }
    int count() const { return m_count; }

private:
    // The pictures of single controls have it too.
    static std::uint32_t ground() {
        const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
        return 0xFF000000u | static_cast<std::uint32_t>(RGB(GetBValue(face), GetGValue(face), GetRValue(face)));
    }
    void makeFont(CFont& font, int points, int weight) {
        LOGFONT description{};
        description.lfHeight = quor::platform::fontHeight(m_frame, points);
        description.lfWeight = weight;
        ::lstrcpynA(description.lfFaceName, kFont, LF_FACESIZE);
        font.CreateFontIndirect(&description);
    }
    // A text as a picture of its size.
    WindowPicture written(const char* text, CFont& font) {
        CSize size;
        {
            CClientDC dc(&m_frame);
            const SelectScope selected(dc, font);
            size = dc.GetTextExtent(text, static_cast<int>(std::strlen(text)));
            size.cx += quor::platform::scaled(m_frame, kOverhang);
        }
        CStatic line;
        line.Create(text, WS_CHILD | WS_VISIBLE | SS_NOPREFIX, CRect(CPoint(0, 0), size), &m_frame, 2);
        line.SetFont(&font);
        line.UpdateWindow();
        WindowPicture picture;
        if (!quorCaptureClientArea(line, picture)) fail(text, "cannot be written");
        return picture;
    }
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
    Sheet m_sheet;
    CFont m_font;
    CFont m_headingFont;
    std::string m_control;  // whose states come now
    int m_count = 0;
    bool m_complete = true;
};

int run(const char* folder) {
    CFrameWnd* const frame = new CFrameWnd;  // deletes itself with its window
    frame->Create(nullptr, "Gallery", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 1000, 700));
    AfxSetMainWnd(frame);
    pump();
    Gallery shown(*frame, folder);
    for (const auto& exhibits : {controlExhibits(), dialogExhibits(), barExhibits(), tabExhibits()})
        for (const Exhibit& exhibit : exhibits) shown.add(exhibit);
    shown.saveSheet();
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
