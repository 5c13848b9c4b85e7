// Grids with rows as a host makes them, and pictures of what the native control shows.
//
// A picture is one line per grid: the rows from top to bottom by name, "_" for a row without data, "*" behind a
// selected row and "!" behind the one with the focus; read from the native control by real messages.
#pragma once

#include "quor/grid/FilterListCtrl.h"
#include "quor/grid/core/CellPainting.h"
#include "support/FakeHost.h"
#include "support/Road.h"
#include "support/WindowFixture.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace quor::grid;

namespace grid_tests {

inline constexpr int kGridId = 77;
inline constexpr DWORD kGridStyle =
    WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER;

// The row's grid part lies behind a polymorphic base of its own.
struct Quoted {
    virtual ~Quoted() = default;
    virtual std::string quote() const = 0;
};

struct Row : Quoted, CFilterListBaseData {
    explicit Row(std::string rowName) : name(std::move(rowName)) {}
    std::string quote() const override { return name; }

    std::string name;
    std::map<int, std::string> cells;  // by columnIndex; column 0 shows the name
    COLORREF text = kColorUnset;
    COLORREF background = kColorUnset;
    int icon = -1;
};

inline DWORD_PTR dataOf(Row* row) { return reinterpret_cast<DWORD_PTR>(static_cast<CFilterListBaseData*>(row)); }
inline Row* rowOf(DWORD_PTR data) { return static_cast<Row*>(reinterpret_cast<CFilterListBaseData*>(data)); }

// The window that owns the grids and answers for their texts.
class Owner : public CWnd {
public:
    int cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& textColor, COLORREF& background, int& icon);
    int exportText(DWORD_PTR data, int columnIndex, CString& text, int& icon);

    bool answers = true;                                          // false: no text is valid
    int asked = 0;                                                // calls of cellText
    std::function<void(DWORD_PTR data, int columnIndex)> onText;  // inside cellText, before it reads the row
    int drawItems = 0;                                            // WM_DRAWITEM that no control took
    bool draws = false;                                           // takes WM_DRAWITEM itself
    std::function<void(const NMHDR&)> onNotify;                   // before the grid hears it back

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

inline ColumnTextMemberCallback memberCallback() { return static_cast<ColumnTextMemberCallback>(&Owner::cellText); }

// In its caption, by messages.
void clickHeading(CFilterListCtrl& grid, int place);

struct Column {
    const char* name;
    int width = 60;
    int format = 0;
    int dataType = 8;
};

class GridFixture : public test::WindowFixture {
protected:
    GridFixture();
    void TearDown() override;

    // Gives the grid a window, columns and a text callback. No mode yet.
    void create(CFilterListCtrl& grid, std::vector<Column> columns = {{"name"}}, CRect rect = CRect(0, 0, 300, 200),
                DWORD style = kGridStyle);
    void createClassic(CFilterListCtrl& grid, std::vector<Column> columns = {{"name"}});
    void createOpti(CFilterListCtrl& grid, std::vector<Column> columns = {{"name"}});

    // Adds rows by one-letter names and closes the batch; "*" and "!" select and focus the row before.
    void fill(CFilterListCtrl& grid, const std::string& picture);
    static std::string picture(CFilterListCtrl& grid);
    Row* row(const std::string& name);

    Owner owner;
    test::Road road = test::Road::created;
    std::function<void(HWND)> onControl;  // before a grid takes a control over

private:
    void giveWindow(CFilterListCtrl& grid, CRect rect, DWORD style);

    std::map<std::string, std::unique_ptr<Row>> m_rows;
};

}  // namespace grid_tests
