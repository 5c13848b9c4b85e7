// Random handling of a list by its user and its owner; after each step the screen must show what a full repaint would.
#pragma once

#include "src/list/CommonListCtrl.h"

#include <functional>
#include <random>
#include <string>

namespace list_tests {

// Paints a row as hosts do: its ground over the whole width of the window, by its number, selection and focus; then
// each cell where the header has it.
void paintRow(CCommonListCtrl& list, const DRAWITEMSTRUCT& item);

// What the owner of the rows does.
struct RowOwner {
    std::function<void(int row)> insert;
    std::function<void(int row)> change;  // its texts, and has it repainted as owners do
};

class PictureMix {
public:
    PictureMix(CCommonListCtrl& list, RowOwner rows, unsigned seed);

    // Runs the number of steps in QUOR_PICTURE_STEPS, 500 if that is not set. Empty, or the first step after which the
    // picture was stale: its name and what differed.
    std::string run();

private:
    int pick(int below) { return std::uniform_int_distribution<int>(0, below - 1)(m_random); }
    int rows() { return m_list.GetItemCount(); }
    CHeaderCtrl& header() { return *m_list.GetHeaderCtrl(); }
    int pickRow() { return pick(rows()); }
    std::string step();

    void changeRows(std::string& name);
    void select(std::string& name);
    void scroll(std::string& name);
    void setOrder();
    void useHeader(std::string& name);
    void resize(std::string& name);
    void showColumns(std::string& name);
    void mouseOnHeader(int from, int to);
    CRect item(int place);

    CCommonListCtrl& m_list;
    RowOwner m_rows;
    unsigned m_seed;
    std::mt19937 m_random;
    CRect m_place;
};

}  // namespace list_tests
