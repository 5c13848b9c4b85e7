// CHotFontCombo: a drop-down list of the installed fonts, each name in its own face; the names of symbol fonts, whose
// letters are pictures, in the combo's. The five that were chosen last in this process, in whatever combo, stand on
// top. Letters typed in quick succession look for a name that begins so.
//
// Fonts are listed when the list is first needed, and a face is made when its name scrolls into view; the faces go when
// the list closes. A combo of a dialog's template needs CBS_DROPDOWNLIST, CBS_OWNERDRAWFIXED and CBS_HASSTRINGS, and
// not CBS_SORT; Create sees to that by itself.
#pragma once

#include "quor/platform/Framework.h"

#include <functional>
#include <memory>

class QUOR_CONTROLS_API CHotFontCombo : public CComboBox {
    DECLARE_DYNAMIC(CHotFontCombo)

public:
    CHotFontCombo();
    ~CHotFontCombo() override;

    // The kind of the combo is this class's own; of `style` the window's bits count.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) override;
    // Lists the fonts anew and keeps the selection if its font is still there.
    void InitFonts();
    // Without regard to case. FALSE, and the selection stays: there is no such font.
    BOOL SelectFont(LPCTSTR name);
    // One more name, above the sorted ones and in the combo's face, until the fonts are listed anew: of a font that is
    // not installed but may stay chosen.
    void OfferMissingFont(LPCTSTR name);
    // Empty without a selection.
    CString GetSelectedFont() const;

    void DrawItem(LPDRAWITEMSTRUCT item) override;
    void MeasureItem(LPMEASUREITEMSTRUCT item) override;
    void PreSubclassWindow() override;

protected:
    // Calls `offer` with each font that may be chosen, in any order, as often as it comes: by its name and character
    // set. The installed ones here; a host may offer others.
    virtual void EnumerateFonts(const std::function<void(const LOGFONT&)>& offer);

    afx_msg BOOL OnDropDown();
    afx_msg BOOL OnCloseUp();
    afx_msg BOOL OnSelEndOk();
    afx_msg BOOL OnSelEndCancel();
    afx_msg BOOL OnLeave();
    afx_msg void OnChar(UINT character, UINT repeat, UINT flags);
    afx_msg LRESULT OnSetFont(WPARAM font, LPARAM redraw);
    DECLARE_MESSAGE_MAP()

private:
    struct Parts;

    void needFonts();
    void refreshRecent();
    void useSelection();
    int itemHeight();
    HFONT faceOf(int item);

    std::unique_ptr<Parts> m_parts;
};
