// The font choosers: the combo's list, keys and faces; the dialogs.
#include "quor/edits/FontSettingDlg.h"
#include "quor/edits/ZTFontDlg.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/resource/resource.h"
#include "support/FakeHost.h"
#include "support/HandleCounts.h"
#include "support/WindowFixture.h"

namespace {

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_VSCROLL;

// Offers what the test says; counts how often it is asked.
class Combo : public CHotFontCombo {
public:
    std::vector<std::pair<const char*, BYTE>> offered = {
        {"Delta", ANSI_CHARSET}, {"alpha", ANSI_CHARSET}, {"Alpine", ANSI_CHARSET}, {"Dots", SYMBOL_CHARSET},
        {"Beta", ANSI_CHARSET},  {"Beta", 204},           {"@Beta", ANSI_CHARSET},  {"Gamma", ANSI_CHARSET}};
    int asked = 0;

    std::string items() {
        std::string told;
        for (int item = 0; item < GetCount(); ++item) {
            CString name;
            GetLBText(item, name);
            told += name + ",";
        }
        return told;
    }

protected:
    void EnumerateFonts(const std::function<void(const LOGFONT&)>& offer) override {
        ++asked;
        for (const auto& [name, charset] : offered) {
            LOGFONT font{};
            font.lfCharSet = charset;
            ::lstrcpynA(font.lfFaceName, name, LF_FACESIZE);
            offer(font);
        }
    }
};

class Fonts : public test::WindowFixture {
protected:
    Fonts() { resetFakeHost(); }
    void make(Combo& combo, int left = 10) {
        ASSERT_TRUE(combo.Create(kStyle, CRect(left, 10, left + 200, 400), &frame(), static_cast<UINT>(left)));
    }
    void choose(Combo& combo, const char* name) {
        combo.ShowDropDown();
        combo.SelectFont(name);
        combo.SetFocus();
        quor::sendKeys({VK_RETURN});
        pumpUntilIdle();
        EXPECT_FALSE(combo.GetDroppedState());
    }
    // Runs the dialog; `act` is called once it stands.
    INT_PTR run(CDialog& dialog, const std::function<void()>& act) {
        frame().onMessage = [act](UINT message, WPARAM, LPARAM, LRESULT&) {
            if (message == WM_APP) act();
            return false;
        };
        frame().PostMessage(WM_APP);
        return dialog.DoModal();
    }
};

TEST_F(Fonts, NamesAreListedWhenTheyAreNeeded) {
    Combo combo;
    make(combo);
    EXPECT_EQ(combo.asked, 0);
    EXPECT_TRUE(combo.SelectFont("BETA"));
    EXPECT_EQ(combo.items(), "alpha,Alpine,Beta,Delta,Dots,Gamma,");
    EXPECT_STREQ(combo.GetSelectedFont(), "Beta");
    EXPECT_FALSE(combo.SelectFont("Bet"));
    EXPECT_STREQ(combo.GetSelectedFont(), "Beta");
    combo.ShowDropDown();
    combo.ShowDropDown(FALSE);
    EXPECT_EQ(combo.asked, 1);
    combo.offered = {{"Beta", ANSI_CHARSET}, {"New", ANSI_CHARSET}};
    combo.InitFonts();
    EXPECT_EQ(combo.items(), "Beta,New,");
    EXPECT_STREQ(combo.GetSelectedFont(), "Beta");
}

TEST_F(Fonts, LettersLookForABeginning) {
    Combo combo;
    make(combo);
    combo.SetFocus();
    int changes = 0;
    frame().onMessage = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        changes += message == WM_COMMAND && HIWORD(wParam) == CBN_SELCHANGE;
        return false;
    };
    quor::sendText("alpi");
    pumpUntilIdle();
    EXPECT_STREQ(combo.GetSelectedFont(), "Alpine");
    EXPECT_EQ(changes, 2) << "alpha, then Alpine";
    quor::sendText("z");
    pumpUntilIdle();
    EXPECT_STREQ(combo.GetSelectedFont(), "Alpine");
}

// Five, so that it does not matter what others chose before.
TEST_F(Fonts, TheLastFiveStandOnTopOfEveryCombo) {
    Combo combo, other;
    make(combo);
    make(other, 300);
    other.offered.pop_back();
    for (const char* name : {"Beta", "alpha", "Gamma", "Delta", "Dots"}) choose(combo, name);
    combo.ShowDropDown();
    EXPECT_EQ(combo.items(), "Dots,Delta,Gamma,alpha,Beta,alpha,Alpine,Beta,Delta,Dots,Gamma,");
    EXPECT_STREQ(combo.GetSelectedFont(), "Dots");
    combo.SelectFont("Alpine");
    combo.SetFocus();
    quor::sendKeys({VK_ESCAPE});
    pumpUntilIdle();
    other.ShowDropDown();
    EXPECT_EQ(other.items(), "Dots,Delta,alpha,Beta,alpha,Alpine,Beta,Delta,Dots,")
        << "Gamma is not offered, Alpine not chosen";
    other.ShowDropDown(FALSE);
}

// How many fonts a list makes: those in view, not those of symbols.
TEST_F(Fonts, FacesAreMadeInViewAndGiveBack) {
    Combo combo;
    std::vector<std::string> names;
    for (int i = 0; i < 500; ++i) names.push_back("Invented " + std::to_string(1000 + i));
    combo.offered.clear();
    for (const std::string& name : names) combo.offered.emplace_back(name.c_str(), ANSI_CHARSET);
    make(combo);
    combo.InitFonts();
    combo.ShowDropDown();
    combo.ShowDropDown(FALSE);
    pumpUntilIdle();
    const int closed = test::countHandles().gdi;
    combo.ShowDropDown();
    pumpUntilIdle();
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ::GetComboBoxInfo(combo, &info);
    ::UpdateWindow(info.hwndList);
    const int made = test::countHandles().gdi - closed;
    EXPECT_GT(made, 3);
    EXPECT_LT(made, 60);
    combo.ShowDropDown(FALSE);
    pumpUntilIdle();
    EXPECT_EQ(test::countHandles().gdi, closed);
}

TEST_F(Fonts, ASettingIsTakenOrRefused) {
    const struct {
        const char* typed;
        WORD key;
        INT_PTR result;
        const char* size;
        std::size_t boxes;
    } cases[] = {
        {" 09", VK_RETURN, IDOK, "9", 0}, {"12", VK_ESCAPE, IDCANCEL, "10", 0}, {"10.5", VK_RETURN, IDCANCEL, "10", 1}};
    for (const auto& each : cases) {
        test::MessageBoxAnswerer answer;
        CFontSettingDlg dialog("Not installed", "10", &frame());
        const INT_PTR result = run(dialog, [&] {
            EXPECT_EQ(dialog.GetDlgItemInt(IDC_FONT_SIZE), 10u);
            CString shown;
            dialog.GetDlgItemText(IDC_FONT_NAME, shown);
            EXPECT_EQ(shown, "Not installed");
            dialog.SetDlgItemText(IDC_FONT_SIZE, each.typed);
            quor::sendKeys({each.key});
            pumpUntilIdle();
            if (!dialog.IsWindowVisible()) return;
            EXPECT_EQ(::GetFocus(), dialog.GetDlgItem(IDC_FONT_SIZE)->m_hWnd);
            quor::sendKeys({VK_ESCAPE});
        });
        EXPECT_EQ(result, each.result) << each.typed;
        EXPECT_STREQ(dialog.GetSize(), each.size);
        EXPECT_STREQ(dialog.GetFont(), "Not installed");
        const std::vector<std::string> told(each.boxes, "The size must be a whole number from 4 to 72.");
        EXPECT_EQ(answer.texts(), told) << each.typed;
    }
}

TEST_F(Fonts, TheSampleFollows) {
    CFontSettingDlg dialog("Not installed", "10", &frame());
    CString name;
    const INT_PTR result = run(dialog, [&] {
        const auto sample = [&] {
            LOGFONT font{};
            const LRESULT shown = dialog.SendDlgItemMessage(IDC_FONT_SAMPLE, WM_GETFONT);
            ::GetObjectA(reinterpret_cast<HFONT>(shown), sizeof font, &font);
            EXPECT_EQ(font.lfHeight, quor::platform::fontHeight(dialog, 20));
            return std::string(font.lfFaceName);
        };
        dialog.SetDlgItemText(IDC_FONT_SIZE, "20");
        EXPECT_EQ(sample(), "Not installed");
        dialog.SetDlgItemText(IDC_FONT_SIZE, "999");
        EXPECT_EQ(sample(), "Not installed");
        dialog.SetDlgItemText(IDC_FONT_SIZE, "20");
        dialog.GotoDlgCtrl(dialog.GetDlgItem(IDC_FONT_NAME));
        CString last, chosen;
        const LRESULT count = dialog.SendDlgItemMessage(IDC_FONT_NAME, CB_GETCOUNT);
        static_cast<CComboBox*>(dialog.GetDlgItem(IDC_FONT_NAME))->GetLBText(static_cast<int>(count) - 1, last);
        quor::sendText(std::string(last));
        pumpUntilIdle();
        dialog.GetDlgItemText(IDC_FONT_NAME, chosen);
        EXPECT_EQ(chosen, last);
        EXPECT_EQ(sample(), std::string(last));
        name = last;
        quor::sendKeys({VK_RETURN});
    });
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(dialog.GetFont(), name);
}

TEST_F(Fonts, DialogsGiveBackWhatTheyTake) {
    test::expectHandlesReturn(50, [&](int) {
        CFontSettingDlg dialog("Tahoma", "10", &frame());
        run(dialog, [] { quor::sendKeys({VK_RETURN}); });
    });
}

TEST_F(Fonts, TheSystemsDialogTakesAndGivesALogfont) {
    CHotFontCombo installed;
    ASSERT_TRUE(installed.Create(kStyle, CRect(10, 10, 210, 400), &frame(), 5));
    installed.InitFonts();
    CString name;
    installed.GetLBText(0, name);
    LOGFONT font{};
    font.lfHeight = -16;
    ::lstrcpynA(font.lfFaceName, name, LF_FACESIZE);
    CZTFontDlg dialog(&font, CF_SCREENFONTS | CF_EFFECTS, nullptr, &frame());
    EXPECT_EQ(dialog.m_cf.Flags, static_cast<DWORD>(CF_SCREENFONTS | CF_EFFECTS | CF_INITTOLOGFONTSTRUCT));
    frame().onMessage = [](UINT message, WPARAM, LPARAM idle, LRESULT&) {
        if (message == WM_ENTERIDLE) ::PostMessageA(reinterpret_cast<HWND>(idle), WM_COMMAND, IDOK, 0);
        return false;
    };
    ASSERT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetLogFont().lfFaceName, name);
    EXPECT_EQ(dialog.GetLogFont().lfHeight, -16);
}

}  // namespace
