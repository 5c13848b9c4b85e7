// Every dialog template of the library, as the system lays it out on the screen that there is; run once more on finer
// ones.
#include "quor/grid/ListTrendSetting.h"
#include "quor/list/CustomizedAppearance.h"
#include "quor/resource/resource.h"
#include "support/FakeHost.h"
#include "support/WindowFixture.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace {

struct Control {
    explicit Control(HWND control) : id(::GetDlgCtrlID(control)) {
        char name[64]{};
        ::RealGetWindowClassA(control, name, sizeof name);
        windowClass = name;
        style = static_cast<DWORD>(::GetWindowLongA(control, GWL_STYLE));
        CWnd::FromHandle(control)->GetWindowText(text);
        ::GetWindowRect(control, &rect);
        ::MapWindowPoints(nullptr, ::GetParent(control), reinterpret_cast<POINT*>(&rect), 2);
    }
    bool isButton(DWORD kind) const { return windowClass == "Button" && (style & BS_TYPEMASK) == kind; }
    bool isGroup() const { return isButton(BS_GROUPBOX); }
    // Does not say what it is for.
    bool isMute() const {
        const char* const mute[] = {"Edit", "ComboBox", "ListBox", WC_LISTVIEWA, TRACKBAR_CLASSA};
        return std::ranges::find(mute, windowClass) != std::end(mute) || isButton(BS_OWNERDRAW);
    }
    // Beside its text, in pixels at 96 dots.
    int padding() const {
        if (windowClass == "Static") return 0;
        return isButton(BS_AUTOCHECKBOX) || isButton(BS_AUTORADIOBUTTON) ? 18 : isGroup() ? 16 : 8;
    }

    int id;
    DWORD style;
    std::string windowClass;
    CString text;
    CRect rect;
};

// The controls for which a tool tip window of the dialog has a tip.
struct Tips {
    HWND dialog;
    std::set<int> ids;

    static BOOL CALLBACK take(HWND window, LPARAM self) {
        auto& [dialog, ids] = *reinterpret_cast<Tips*>(self);
        char name[64]{};
        ::GetClassNameA(window, name, sizeof name);
        if (::GetWindow(window, GW_OWNER) != dialog || std::string(name) != TOOLTIPS_CLASSA) return TRUE;
        TTTOOLINFOA tool{};
        tool.cbSize = TTTOOLINFOA_V1_SIZE;
        for (WPARAM i = 0; ::SendMessageA(window, TTM_ENUMTOOLSA, i, reinterpret_cast<LPARAM>(&tool)); ++i)
            ids.insert(::GetDlgCtrlID(reinterpret_cast<HWND>(tool.uId)));
        return TRUE;
    }
};

class Templates : public test::WindowFixture {
protected:
    Templates() { resetFakeHost(); }
    int pixels(int length) { return quor::platform::scaled(frame(), length); }
    // Without those a unit wide: a button for a key, which nobody sees.
    std::vector<Control> controlsOf(HWND dialog) {
        std::vector<Control> all;
        for (HWND child = ::GetWindow(dialog, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
            const Control control(child);
            if ((control.style & WS_VISIBLE) && control.rect.Width() > pixels(8)) all.push_back(control);
        }
        return all;
    }
    void check(HWND dialog, const std::set<int>& tipped) {
        CRect client;
        ::GetClientRect(dialog, &client);
        CClientDC dc(CWnd::FromHandle(dialog));
        const SelectScope font(&dc, CWnd::FromHandle(dialog)->GetFont());
        std::set<int> letters;
        const Control *former = nullptr, *lastStop = nullptr;
        const std::vector<Control> controls = controlsOf(dialog);
        for (const Control& one : controls) {
            SCOPED_TRACE(one.id);
            EXPECT_EQ(one.rect & client, one.rect) << "lies outside";
            for (const Control& other : controls) {
                const CRect common = one.rect & other.rect;
                const bool isFrame = one.isGroup() || other.isGroup();
                const bool isEdge = one.isGroup() && other.isGroup() && common.Height() <= 1;  // rounded to one line
                EXPECT_TRUE(&one == &other || common.IsRectEmpty() || isEdge ||
                            (isFrame && (common == one.rect || common == other.rect)))
                    << "overlaps " << other.id;
            }
            CRect needed(0, 0, 0, 0);
            if (!one.text.IsEmpty()) dc.DrawText(one.text, &needed, DT_CALCRECT | DT_SINGLELINE);
            if (!one.text.IsEmpty()) needed.right += pixels(one.padding());
            EXPECT_TRUE(needed.Width() <= one.rect.Width() && needed.Height() <= one.rect.Height()) << "is cut";
            const int mnemonic = one.text.Find('&');
            EXPECT_TRUE(mnemonic < 0 || letters.insert(std::toupper(one.text[mnemonic + 1])).second) << one.text;
            const bool labelled = former && former->windowClass == "Static" && !former->text.IsEmpty();
            EXPECT_TRUE(!one.isMute() || tipped.contains(one.id) || labelled) << "has neither label nor tip";
            former = &one;
            if (!(one.style & WS_TABSTOP)) continue;
            EXPECT_TRUE(!lastStop || one.rect.top >= lastStop->rect.bottom || one.rect.left >= lastStop->rect.right)
                << "comes before " << lastStop->id;
            lastStop = &one;
        }
    }
    std::set<int> tippedOf(CZTDialog& dialog, UINT name) {
        const HINSTANCE former = AfxGetResourceHandle();
        AfxSetResourceHandle(module);
        EXPECT_TRUE(dialog.Create(name, &frame()));
        AfxSetResourceHandle(former);
        Tips tips{dialog.m_hWnd, {}};
        ::EnumThreadWindows(::GetCurrentThreadId(), &Tips::take, reinterpret_cast<LPARAM>(&tips));
        dialog.DestroyWindow();
        return tips.ids;
    }

    const HMODULE module = ::GetModuleHandleA("QuorControls.dll");
};

BOOL CALLBACK takeTemplate(HMODULE, LPCSTR, LPSTR name, LONG_PTR templates) {
    reinterpret_cast<std::vector<LPCSTR>*>(templates)->push_back(name);
    return TRUE;
}

TEST_F(Templates, AreLaidOutForTheScreen) {
    CCustomizedAppearance appearance;
    CListTrendSetting trends;
    std::map<LPCSTR, std::set<int>> tipped;
    tipped[MAKEINTRESOURCEA(IDD_CUSTOMIZE_APPEARANCE)] = tippedOf(appearance, IDD_CUSTOMIZE_APPEARANCE);
    tipped[MAKEINTRESOURCEA(IDD_TREND_SETTINGS)] = tippedOf(trends, IDD_TREND_SETTINGS);
    // Stands below the button that opens it, and is nothing else.
    tipped[MAKEINTRESOURCEA(IDD_FILTER_TEXT)] = {IDC_FILTER_VALUES};
    EXPECT_EQ(tipped[MAKEINTRESOURCEA(IDD_CUSTOMIZE_APPEARANCE)], (std::set{1035, 1001, 1033, 2626}));
    std::vector<LPCSTR> templates;
    ::EnumResourceNamesA(module, RT_DIALOG, &takeTemplate, reinterpret_cast<LONG_PTR>(&templates));
    EXPECT_GE(templates.size(), 4u);
    for (const LPCSTR name : templates) {
        SCOPED_TRACE(reinterpret_cast<ULONG_PTR>(name));
        const auto procedure = [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; };
        const HWND dialog = ::CreateDialogParamA(module, name, frame().m_hWnd, procedure, 0);
        ASSERT_NE(dialog, nullptr);
        check(dialog, tipped[name]);
        ::DestroyWindow(dialog);
    }
}

}  // namespace
