// What the gallery shows: one line a picture, a control in a state.
#pragma once

#include "quor/platform/Framework.h"

#include <functional>
#include <memory>
#include <vector>

namespace gallery {

// Air around a control in its picture.
inline constexpr int kAir = 6;

// Where an exhibit stands: a window to put controls into, and what must live as long as the picture is taken.
struct Stage {
    CWnd& window;
    CFont& font;  // as dialogs have it
    std::vector<std::shared_ptr<void>> kept;
    HWND popup = nullptr;   // a window of its own that belongs into the picture, such as an open list
    HWND dialog = nullptr;  // a window of its own that is the picture; hidden by whoever opens it next

    // A control that lives as long as the stage.
    template <class Control>
    Control& add() {
        auto control = std::make_shared<Control>();
        kept.push_back(control);
        return *control;
    }
    // The stage's upper left corner for a control of this size, in lengths of a plain screen.
    CRect place(CSize size) const;
};

struct Exhibit {
    const char* control;
    const char* state;
    CSize size;  // what the stage has room for, beside the air; a dialog brings its own
    std::function<void(Stage&)> show;
    bool modal = false;  // a dialog that returns when it is cancelled; its picture is taken while it stands
};

// A new control adds its lines in one of these.
std::vector<Exhibit> controlExhibits();
std::vector<Exhibit> dialogExhibits();
std::vector<Exhibit> barExhibits();
std::vector<Exhibit> tabExhibits();

}  // namespace gallery
