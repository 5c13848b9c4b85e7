// The font choosers: the combo's list, keys and faces; the dialogs.
#include "quor/edits/FontSettingDlg.h"
#include "quor/edits/ZTFontDlg.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/resource/resource.h"
#include "support/FakeHost.h"
#include "support/HandleCounts.h"
#include "support/ModalAnswer.h"
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
        CString told, name;
        for (int item = 0; item < GetCount(); ++item, told += name + ",") GetLBText(item, name);
        return told.GetString();
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
    // Runs the dialog; `act` is called once it stands.
    INT_PTR run(CDialog& dialog, const std::function<void()>& act) {
        const test::ModalAnswer answer(frame(), [&](HWND) { act(); });
        return dialog.DoModal();
    }
};

TEST_F(Fonts, NamesAreListedWhenTheyAreNeeded) {
    Combo combo;
    make(combo);
    EXPECT_EQ(combo.asked, 0);
    EXPECT_TRUE(combo.SelectFont("BETA"));
    EXPECT_EQ(combo.items(), "alpha,Alpine,Beta,Delta,Dots,Gamma,");
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
    quor::sendText("alpiz");
    pumpUntilIdle();
    EXPECT_STREQ(combo.GetSelectedFont(), "Alpine");
    EXPECT_EQ(changes, 2) << "alpha, then Alpine";
}

// Five, so that it does not matter what others chose before.
TEST_F(Fonts, TheLastFiveStandOnTopOfEveryCombo) {
    Combo combo, other;
    make(combo);
    make(other, 300);
    other.offered.pop_back();
    const auto leave = [&](const char* name, WORD key) {
        combo.ShowDropDown();
        combo.SelectFont(name);
        combo.SetFocus();
        quor::sendKeys({key});
        pumpUntilIdle();
    };
    for (const char* name : {"Beta", "alpha", "Gamma", "Delta", "Dots"}) leave(name, VK_RETURN);
    leave("Alpine", VK_ESCAPE);
    EXPECT_EQ(combo.items(), "Dots,Delta,Gamma,alpha,Beta,alpha,Alpine,Beta,Delta,Dots,Gamma,");
    other.ShowDropDown();
    EXPECT_EQ(other.items(), "Dots,Delta,alpha,Beta,alpha,Alpine,Beta,Delta,Dots,") << "Gamma is not offered";
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
    int made = 0, closed = 0;
    for (int round = 0; round < 2; ++round) {
        combo.ShowDropDown();
        pumpUntilIdle();
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        ::GetComboBoxInfo(combo, &info);
        ::UpdateWindow(info.hwndList);
        made = test::countHandles().gdi - closed;
        combo.ShowDropDown(FALSE);
        pumpUntilIdle();
        if (round == 0) closed = test::countHandles().gdi;
    }
    EXPECT_GT(made, 3);
    EXPECT_LT(made, 60);
    EXPECT_EQ(test::countHandles().gdi, closed);
}

TEST_F(Fonts, ASettingIsTakenOrRefused) {
    const struct {
        const char* typed;
        WORD key;
        INT_PTR result;
        const char* size;
        std::vector<std::string> told;
    } cases[] = {{" 09", VK_RETURN, IDOK, "9", {}},
                 {"12", VK_ESCAPE, IDCANCEL, "10", {}},
                 {"10.5", VK_RETURN, IDCANCEL, "10", {"The size must be a whole number from 4 to 72."}}};
    for (const auto& each : cases) {
        test::MessageBoxAnswerer answer;
        CFontSettingDlg dialog("Not installed", "10", &frame());
        const INT_PTR result = run(dialog, [&] {
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
        EXPECT_EQ(answer.texts(), each.told) << each.typed;
    }
}

TEST_F(Fonts, TheSampleFollows) {
    CFontSettingDlg dialog("Not installed", "10", &frame());
    CString last;
    const INT_PTR result = run(dialog, [&] {
        const auto expectSample = [&](const char* face) {
            LOGFONT font{};
            dialog.GetDlgItem(IDC_FONT_SAMPLE)->GetFont()->GetLogFont(&font);
            EXPECT_EQ(font.lfHeight, quor::platform::fontHeight(dialog, 20));
            EXPECT_STREQ(font.lfFaceName, face);
        };
        for (const char* size : {"20", "999"}) {
            dialog.SetDlgItemText(IDC_FONT_SIZE, size);
            expectSample("Not installed");
        }
        dialog.SetDlgItemText(IDC_FONT_SIZE, "20");
        auto& faces = *static_cast<CComboBox*>(dialog.GetDlgItem(IDC_FONT_NAME));
        faces.GetLBText(faces.GetCount() - 1, last);
        dialog.GotoDlgCtrl(&faces);
        quor::sendText(std::string(last));
        pumpUntilIdle();
        expectSample(last);
        quor::sendKeys({VK_RETURN});
    });
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(dialog.GetFont(), last);
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
    const test::ModalAnswer answer(frame(), [](HWND box) { ::PostMessageA(box, WM_COMMAND, IDOK, 0); });
    ASSERT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetLogFont().lfFaceName, name);
    EXPECT_EQ(dialog.GetLogFont().lfHeight, -16);
}

}  // namespace
