// Every dialog template of the library, as the system lays it out on the screen that there is; run once more on finer
// ones.
#include "quor/grid/ListTrendSetting.h"
#include "quor/list/CustomizedAppearance.h"
#include "quor/resource/resource.h"
#include "support/FakeHost.h"
#include "support/WindowFixture.h"

#include <cctype>
#include <set>

namespace {

constexpr int kLeastWidth = 8;  // at 96 dots an inch

struct Control {
    int id = 0;
    DWORD style = 0;
    std::string windowClass;
    CString text;
    CRect rect;

    bool isButton(DWORD kind) const { return windowClass == "Button" && (style & BS_TYPEMASK) == kind; }
    bool isGroup() const { return isButton(BS_GROUPBOX); }
    bool isLabel() const { return windowClass == "Static" && !text.IsEmpty(); }
    // Does not say what it is for.
    bool isMute() const {
        for (const char* mute : {"Edit", "ComboBox", "ListBox", WC_LISTVIEWA, TRACKBAR_CLASSA})
            if (windowClass == mute) return true;
        return isButton(BS_OWNERDRAW);
    }
    // Beside its text, in pixels at 96 dots.
    int padding() const {
        if (windowClass == "Static") return 0;
        const bool isBox = isButton(BS_AUTOCHECKBOX) || isButton(BS_AUTORADIOBUTTON);
        return isBox ? 18 : isGroup() ? 16 : 8;
    }
};

// Takes the controls for which a tool tip window of the dialog has a tip.
struct TipsOf {
    HWND dialog;
    std::set<int>* ids;

    static BOOL CALLBACK take(HWND window, LPARAM self) {
        const auto& [dialog, ids] = *reinterpret_cast<TipsOf*>(self);
        char name[64]{};
        ::GetClassNameA(window, name, sizeof name);
        if (::GetWindow(window, GW_OWNER) != dialog || std::string(name) != TOOLTIPS_CLASSA) return TRUE;
        TTTOOLINFOA tool{};
        tool.cbSize = TTTOOLINFOA_V1_SIZE;
        for (WPARAM i = 0; ::SendMessageA(window, TTM_ENUMTOOLSA, i, reinterpret_cast<LPARAM>(&tool)); ++i)
            ids->insert(::GetDlgCtrlID(reinterpret_cast<HWND>(tool.uId)));
        return TRUE;
    }
};

std::vector<WORD> templates;
BOOL CALLBACK takeTemplate(HMODULE, LPCSTR, LPSTR name, LONG_PTR) {
    templates.push_back(static_cast<WORD>(reinterpret_cast<ULONG_PTR>(name)));
    return TRUE;
}

class Templates : public test::WindowFixture {
protected:
    Templates() {
        resetFakeHost();
        module = ::GetModuleHandleA("QuorControls.dll");
        templates.clear();
        ::EnumResourceNamesA(module, RT_DIALOG, &takeTemplate, 0);
    }

    HWND create(WORD name) {
        const auto dialogProcedure = [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; };
        return ::CreateDialogParamA(module, MAKEINTRESOURCEA(name), frame().m_hWnd, dialogProcedure, 0);
    }
    int pixels(int length) { return quor::platform::scaled(frame(), length); }
    std::vector<Control> controlsOf(HWND dialog) {
        std::vector<Control> all;
        for (HWND child = ::GetWindow(dialog, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
            char name[64]{};
            ::RealGetWindowClassA(child, name, sizeof name);
            Control control;
            control.id = ::GetDlgCtrlID(child);
            control.style = static_cast<DWORD>(::GetWindowLongA(child, GWL_STYLE));
            control.windowClass = name;
            CWnd::FromHandle(child)->GetWindowText(control.text);
            ::GetWindowRect(child, &control.rect);
            ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&control.rect), 2);
            // One unit wide: a button for a key, which nobody sees.
            if ((control.style & WS_VISIBLE) && control.rect.Width() > pixels(kLeastWidth)) all.push_back(control);
        }
        return all;
    }

    void checkPlaces(const std::vector<Control>& controls, const CRect& client) {
        for (const Control& one : controls) {
            EXPECT_EQ(one.rect & client, one.rect) << one.id << " lies outside";
            for (const Control& other : controls) {
                CRect common = one.rect & other.rect;
                const bool isFrame = one.isGroup() || other.isGroup();
                const bool isEdge = one.isGroup() && other.isGroup() && common.Height() <= 1;  // rounded to one line
                const bool apart =
                    common.IsRectEmpty() || isEdge || (isFrame && (common == one.rect || common == other.rect));
                EXPECT_TRUE(&one == &other || apart) << one.id << " and " << other.id << " overlap";
            }
        }
    }
    void checkTexts(HWND dialog, const std::vector<Control>& controls) {
        std::set<int> letters;
        CClientDC dc(CWnd::FromHandle(dialog));
        const SelectScope font(&dc, CWnd::FromHandle(dialog)->GetFont());
        for (const Control& control : controls) {
            if (control.text.IsEmpty()) continue;
            CRect needed;
            dc.DrawText(control.text, &needed, DT_CALCRECT | DT_SINGLELINE);
            EXPECT_LE(needed.Width() + pixels(control.padding()), control.rect.Width()) << control.text;
            EXPECT_LE(needed.Height(), control.rect.Height()) << control.text;
            const int mnemonic = control.text.Find('&');
            if (mnemonic < 0) continue;
            EXPECT_TRUE(letters.insert(std::toupper(control.text[mnemonic + 1])).second) << control.text;
        }
    }
    void checkOrder(const std::vector<Control>& controls) {
        const Control* former = nullptr;
        for (const Control& control : controls) {
            if (!(control.style & WS_TABSTOP)) continue;
            const bool follows =
                !former || control.rect.top >= former->rect.bottom || control.rect.left >= former->rect.right;
            EXPECT_TRUE(follows) << control.id << " comes before " << former->id;
            former = &control;
        }
    }
    static void checkLabels(const std::vector<Control>& controls, const std::set<int>& tipped) {
        for (std::size_t i = 0; i < controls.size(); ++i) {
            if (!controls[i].isMute() || tipped.contains(controls[i].id)) continue;
            EXPECT_TRUE(i > 0 && controls[i - 1].isLabel()) << controls[i].id << " has neither label nor tip";
        }
    }
    // The controls of a dialog that have a tip.
    std::set<int> tippedOf(CZTDialog& dialog, UINT name) {
        const HINSTANCE former = AfxGetResourceHandle();
        AfxSetResourceHandle(module);
        EXPECT_TRUE(dialog.Create(name, &frame()));
        AfxSetResourceHandle(former);
        std::set<int> ids;
        TipsOf tips{dialog.m_hWnd, &ids};
        ::EnumThreadWindows(::GetCurrentThreadId(), &TipsOf::take, reinterpret_cast<LPARAM>(&tips));
        dialog.DestroyWindow();
        return ids;
    }

    HMODULE module = nullptr;
};

TEST_F(Templates, AreLaidOutForTheScreen) {
    CCustomizedAppearance appearance;
    CListTrendSetting trends;
    std::map<WORD, std::set<int>> tipped;
    tipped[IDD_CUSTOMIZE_APPEARANCE] = tippedOf(appearance, IDD_CUSTOMIZE_APPEARANCE);
    tipped[IDD_TREND_SETTINGS] = tippedOf(trends, IDD_TREND_SETTINGS);
    tipped[IDD_FILTER_TEXT] = {IDC_FILTER_VALUES};  // stands below the button that opens it, and is nothing else
    EXPECT_EQ(tipped[IDD_CUSTOMIZE_APPEARANCE], (std::set{1035, 1001, 1033, 2626}));
    EXPECT_GE(templates.size(), 4u);
    for (const WORD name : templates) {
        SCOPED_TRACE(name);
        const HWND dialog = create(name);
        ASSERT_NE(dialog, nullptr);
        CRect client;
        ::GetClientRect(dialog, &client);
        const std::vector<Control> controls = controlsOf(dialog);
        checkPlaces(controls, client);
        checkTexts(dialog, controls);
        checkOrder(controls);
        checkLabels(controls, tipped[name]);
        ::DestroyWindow(dialog);
    }
}

}  // namespace
