// Long random mixes of everything that a host and a user do with a live grid, compared with GridModel after each
// action. A mix is a list of numbers; each makes one action out of the state that it meets. A fault is reported with
// its seed and its action.
#pragma once

#include "tests/core/grid/GridModel.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace grid_mix {

// What is compared with the model.
class Subject {
public:
    virtual ~Subject() = default;
    virtual GridModel& model() = 0;
    // Carries the action out; it follows the model. The operation's result, 0 for one that has none.
    virtual int apply(const Action& action) = 0;

    virtual int displayCount() = 0;
    virtual int itemCount() = 0;
    virtual DWORD_PTR dataOfVisual(int visual) = 0;
    virtual int mapIndexOfSlot(int slot) = 0;
    virtual int checkOfVisual(int visual) = 0;
    virtual Filters filters() = 0;
    // What the row was told: its map index and visual index.
    virtual std::pair<int, int> numbersOf(Row& row) = 0;
    // What else there is; empty when it is as the model says. Asked now and then: a window that is asked for its state
    // has to settle what it may put off otherwise.
    virtual std::string compareRest() { return {}; }
};

// A new subject for each run; the rows of a run outlive it.
using MakeSubject = std::function<std::unique_ptr<Subject>()>;

// How a mix goes.
struct Form {
    int fewRows = 10;
    int manyRows = 45;
    int looks = 1;       // compared after one of so many actions
    bool flips = false;  // mostly updates of rows that pass and fail a filter
};

// `steps` actions from the seed. Empty, or the report of the first fault.
std::string runMix(const MakeSubject& make, unsigned seed, int steps, const Form& form = {});

}  // namespace grid_mix
